#include "browser/LibroXlsx.hpp"

#include "runtime/Unicode.hpp"

#include <array>
#include <charconv>

namespace atipicos {

namespace {

    constexpr auto declaracion = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
    constexpr std::size_t trozo = 65'536; ///< bytes of rows that are gathered before they are packed

    constexpr auto tipos
        = R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
          R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
          R"(<Default Extension="xml" ContentType="application/xml"/>)"
          R"(<Override PartName="/xl/workbook.xml" ContentType="application/)"
          R"(vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>)"
          R"(<Override PartName="/xl/styles.xml" ContentType="application/)"
          R"(vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/>)"
          R"(<Override PartName="/xl/worksheets/sheet1.xml" ContentType="application/)"
          R"(vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/></Types>)";

    constexpr auto relaciones
        = R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
          R"(<Relationship Id="rId1" Target="xl/workbook.xml" )"
          R"(Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument"/>)"
          R"(</Relationships>)";

    constexpr auto relaciones_del_libro
        = R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
          R"(<Relationship Id="rId1" Target="worksheets/sheet1.xml" )"
          R"(Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet"/>)"
          R"(<Relationship Id="rId2" Target="styles.xml" )"
          R"(Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles"/>)"
          R"(</Relationships>)";

    constexpr auto libro_hasta_la_hoja
        = R"(<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" )"
          R"(xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
          R"(<bookViews><workbookView/></bookViews><sheets><sheet name=")";
    constexpr auto libro_desde_la_hoja = R"(" sheetId="1" r:id="rId1"/></sheets></workbook>)";

    /// One format for each `Formato`, in its order; 4 is the built-in "#,##0.00".
    constexpr auto estilos
        = R"(<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">)"
          R"(<numFmts count="1"><numFmt numFmtId="164" formatCode="dd/mm/yyyy"/></numFmts>)"
          R"(<fonts count="2"><font><sz val="11"/><name val="Calibri"/><family val="2"/></font>)"
          R"(<font><b/><sz val="11"/><name val="Calibri"/><family val="2"/></font></fonts>)"
          R"(<fills count="2"><fill><patternFill patternType="none"/></fill>)"
          R"(<fill><patternFill patternType="gray125"/></fill></fills>)"
          R"(<borders count="1"><border><left/><right/><top/><bottom/><diagonal/></border></borders>)"
          R"(<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>)"
          R"(<cellXfs count="4"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>)"
          R"(<xf numFmtId="0" fontId="1" fillId="0" borderId="0" xfId="0" applyFont="1"/>)"
          R"(<xf numFmtId="4" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/>)"
          R"(<xf numFmtId="164" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/></cellXfs>)"
          R"(<cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles></styleSheet>)";

    constexpr auto hoja_hasta_las_columnas
        = R"(<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">)"
          R"(<sheetViews><sheetView workbookViewId="0">)"
          R"(<pane ySplit="1" topLeftCell="A2" activePane="bottomLeft" state="frozen"/></sheetView></sheetViews>)"
          R"(<sheetFormatPr defaultRowHeight="15"/><cols><col min="1" max=")";
    constexpr auto hoja_desde_las_columnas = R"(" width="14.7109375" customWidth="1"/></cols><sheetData>)";

    void anexa_numero(std::string& destino, auto valor)
    {
        std::array<char, 32> cifras{};
        destino.append(cifras.data(), std::to_chars(cifras.data(), cifras.data() + cifras.size(), valor).ptr);
    }

    /// "A" to "Z", "AA" …
    void anexa_columna(std::string& destino, std::size_t columna)
    {
        if (columna >= 26)
            anexa_columna(destino, columna / 26 - 1);
        destino += static_cast<char>('A' + columna % 26);
    }

    /// Whether a text says by itself what a sheet takes for an escaped character: `_x000D_`.
    bool parece_escape(std::string_view texto)
    {
        constexpr std::string_view cifras = "0123456789abcdefABCDEF";
        return texto.size() >= 7 && texto[0] == '_' && texto[1] == 'x' && texto[6] == '_'
            && texto.substr(2, 4).find_first_not_of(cifras) == std::string_view::npos;
    }

    void anexa_escapado(std::string& destino, std::string_view texto)
    {
        constexpr std::string_view hexadecimal = "0123456789ABCDEF";
        for (std::size_t i = 0; i < texto.size(); ++i) {
            const auto c = static_cast<unsigned char>(texto[i]);
            if (c == '&')
                destino += "&amp;";
            else if (c == '<')
                destino += "&lt;";
            else if (c == '>')
                destino += "&gt;";
            else if (c == '"')
                destino += "&quot;";
            else if (c < 0x20 && c != '\t' && c != '\n')
                ((destino += "_x00") += hexadecimal[c >> 4U]) += std::string{ hexadecimal[c & 15U], '_' };
            else if (c == '_' && parece_escape(texto.substr(i)))
                destino += "_x005F_";
            else
                destino += texto[i];
        }
    }

}

LibroXlsx::LibroXlsx(std::ostream& salida, std::string_view hoja, const std::vector<std::string>& titulos)
    : m_zip(salida)
{
    std::string libro = libro_hasta_la_hoja;
    anexa_escapado(libro, hoja);
    libro += libro_desde_la_hoja;
    pon_parte("[Content_Types].xml", tipos);
    pon_parte("_rels/.rels", relaciones);
    pon_parte("xl/workbook.xml", libro);
    pon_parte("xl/_rels/workbook.xml.rels", relaciones_del_libro);
    pon_parte("xl/styles.xml", estilos);

    m_zip.empieza("xl/worksheets/sheet1.xml");
    ((m_xml += declaracion) += hoja_hasta_las_columnas);
    anexa_numero(m_xml, titulos.size());
    m_xml += hoja_desde_las_columnas;
    static_cast<void>(empieza_fila());
    for (std::size_t i = 0; i < titulos.size(); ++i)
        static_cast<void>(texto(i, titulos[i], Formato::titulo));
}

void LibroXlsx::pon_parte(const char* nombre, std::string_view contenido)
{
    m_zip.empieza(nombre);
    m_zip.escribe(declaracion);
    m_zip.escribe(contenido);
    m_zip.termina_parte();
}

bool LibroXlsx::empieza_fila()
{
    if (m_filas == filas_maximas)
        return false;
    if (m_filas > 0)
        m_xml += "</row>";
    if (m_xml.size() >= trozo)
        vacia();
    m_xml += "<row r=\"";
    anexa_numero(m_xml, ++m_filas);
    m_xml += "\">";
    return true;
}

void LibroXlsx::empieza_celda(std::size_t columna, Formato formato)
{
    m_xml += "<c r=\"";
    anexa_columna(m_xml, columna);
    anexa_numero(m_xml, m_filas);
    m_xml += '"';
    if (formato == Formato::normal)
        return;
    m_xml += " s=\"";
    anexa_numero(m_xml, static_cast<int>(formato));
    m_xml += '"';
}

bool LibroXlsx::texto(std::size_t columna, std::string_view valor, Formato formato)
{
    if (valor.empty())
        return true;
    const auto letras = a_utf16(valor);
    if (letras.size() > letras_maximas)
        return false;
    empieza_celda(columna, formato);
    m_xml += " t=\"inlineStr\"><is><t xml:space=\"preserve\">";
    anexa_escapado(m_xml, a_utf8(letras));
    m_xml += "</t></is></c>";
    return true;
}

void LibroXlsx::numero(std::size_t columna, double valor, Formato formato)
{
    empieza_celda(columna, formato);
    m_xml += "><v>";
    anexa_numero(m_xml, valor);
    m_xml += "</v></c>";
}

void LibroXlsx::vacia()
{
    m_zip.escribe(m_xml);
    m_xml.clear();
}

void LibroXlsx::termina()
{
    m_xml += "</row></sheetData></worksheet>";
    vacia();
    m_zip.termina_parte();
    m_zip.termina();
}

} // namespace atipicos
