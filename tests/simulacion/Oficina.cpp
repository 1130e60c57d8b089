#include "tests/simulacion/Oficina.hpp"

#include "browser/DetalleAtipico.hpp"
#include "browser/EliminarAtipico.hpp"
#include "browser/ListaAtipicos.hpp"
#include "editor/CargoAbierto.hpp"
#include "host/documento/CargoImpreso.hpp"
#include "host/documento/DocumentoCargo.hpp"
#include "host/orvalin/Biblioteca.hpp"
#include "posting/GenerarPrev.hpp"
#include "runtime/Formato.hpp"
#include "tests/host/LienzoDePrueba.hpp"
#include "tests/host/MedidorFijo.hpp"
#include "tests/simulacion/Contenido.hpp"

#include <algorithm>

namespace atipicos::pruebas {

namespace {

    constexpr std::array<std::int32_t, oficinistas> usuarios{ 1, 2, 3, 12 };
    constexpr std::array<std::int32_t, 5> articulos{ 0, 1003, 1006, 1010, 1025 };
    constexpr std::array<const char*, 6> frases{ "", "Palé dañado", "Ñandú, 3 € «así»",
        "d´origen\tcon tabulador", "línea\r\nlarga", "‏من اليمين‎ %DOCUMENTO%" };

    /// A line in which every figure is chosen by the step; one in sixteen is a credit.
    LineaModelo teclea(const Paso& paso)
    {
        LineaModelo linea;
        linea.articulo = articulos.at(paso.a % articulos.size());
        linea.descripcion = frases.at(paso.a / 8 % frases.size());
        linea.observaciones = frases.at(paso.b / 8 % frases.size());
        linea.unidades = static_cast<Crudo>(1 + paso.b % 5'000) * 100 * (paso.c % 16 == 0 ? -1 : 1);
        linea.costo = static_cast<Crudo>(paso.c % 1'000'000);
        return linea;
    }

    LineaTecleada tecleada(const LineaModelo& linea)
    {
        return { linea.articulo, linea.descripcion, linea.observaciones, Currency::de_crudo(linea.unidades),
            Currency::de_crudo(linea.costo) };
    }

    std::string cuenta_de(std::int32_t articulo)
    {
        return articulo == 1003 ? "75900010" : articulo == 1025 ? "75900011" : "";
    }

    ClaveCargo clave_de(const CargoModelo& cargo)
    {
        return { static_cast<std::int16_t>(cargo.fecha.anio()), cargo.almacen, cargo.codigo };
    }

    std::string en_una_linea(const std::vector<Mensaje>& avisos)
    {
        std::string texto;
        for (const auto& aviso : avisos)
            texto += " «" + aviso.titulo + "»: " + aviso.texto;
        return texto;
    }

}

Oficina::Oficina(Modelo& modelo)
    : m_modelo(modelo)
{
    bases::crea_bases(m_carpeta / "datos", false);
    m_reloj->valor = dia_y_hora("21/11/2026", 0, 0, 1);
    modComun::set_MsgBox(m_avisos);
    modComun::set_Reloj(m_reloj);
    for (std::size_t i = 0; i < oficinistas; ++i) {
        auto& quien = m_oficinistas.at(i);
        quien.usuario = usuarios.at(i);
        conecta(quien);
        sienta(quien);
        quien.edicion.Nuevo_Atipico();
    }
}

Oficina::~Oficina() { vacia_contexto(); }

void Oficina::conecta(Oficinista& quien)
{
    vacia_contexto();
    modComun::set_MsgBox(m_avisos);
    modComun::set_Reloj(m_reloj);
    quien.contable.reset();
    quien.bases = bases::abre_bases(m_carpeta / "datos", { .sincronizacion_completa = false });
    quien.gestion = std::make_shared<ConexionEspia>("gestion", quien.bases.orvalin, quien.parte);
    quien.contabilidad = std::make_shared<ConexionEspia>("contabilidad", quien.bases.bexmor, quien.parte);
    quien.empresa = std::make_shared<orvalin::Empresa>(quien.bases.orvalin, std::int16_t{ 1 }, quien.usuario);
    quien.biblioteca = std::make_shared<bexmor::Biblioteca>(quien.contabilidad);
    quien.contable = quien.biblioteca->NuevaEmpresa();
    quien.contable->Codigo = 1;
    if (!quien.contable->Cargar())
        throw std::runtime_error("the sample has no accounting company 1");
}

void Oficina::sienta(const Oficinista& quien) const
{
    modComun::set_EmpresaOrvalin(quien.empresa);
    modComun::set_ConexionOrvalin(quien.gestion);
    modComun::set_EmpresaBexmor(quien.contable);
    modComun::set_ConexionBexmor(quien.contabilidad);
}

std::optional<std::string> Oficina::da(const Paso& paso)
{
    static constexpr std::array hacer{ &Oficina::linea, &Oficina::cambia, &Oficina::quita, &Oficina::comenta,
        &Oficina::cancela, &Oficina::guarda, &Oficina::renuncia, &Oficina::abre, &Oficina::elimina,
        &Oficina::lista, &Oficina::detalle, &Oficina::imprime, &Oficina::pierde }; // in the order of Accion
    auto& quien = m_oficinistas.at(paso.quien);
    m_reloj->valor = Date(m_reloj->valor.instante() + std::chrono::seconds(1));
    m_avisos->dichos.clear();
    quien.parte->dichas.clear();
    quien.parte->falla_en = 0;
    sienta(quien);
    try {
        return (this->*hacer.at(static_cast<std::size_t>(paso.accion)))(quien, paso);
    } catch (const std::exception& error) {
        return error.what();
    }
}

const CargoModelo* Oficina::elige(std::uint32_t cual) const
{
    const auto& cargos = m_modelo.cargos();
    if (cargos.empty())
        return nullptr;
    return &std::next(cargos.begin(), static_cast<std::ptrdiff_t>(cual % cargos.size()))->second;
}

Oficina::Diferencia Oficina::igual_que_su_borrador(const Oficinista& quien)
{
    const auto& lineas = quien.borrador.lineas;
    const auto& filas = quien.edicion.filas();
    if (filas.size() != lineas.size())
        return "the grid has " + std::to_string(filas.size()) + " rows, not " + std::to_string(lineas.size());
    for (std::size_t i = 0; i < filas.size(); ++i)
        if (filas[i].Importe.crudo() != lineas[i].importe()
            || filas[i].Cuenta != cuenta_de(lineas[i].articulo)
            || filas[i].linea.Observaciones != lineas[i].observaciones)
            return "row " + std::to_string(i + 1) + " is not what was keyed in";
    if (quien.edicion.Total().crudo() != quien.borrador.total())
        return "the total is " + std::to_string(quien.edicion.Total().crudo()) + ", not "
            + std::to_string(quien.borrador.total());
    return {};
}

/// The header of a new charge is keyed in with its first line.
void Oficina::empieza_cargo(Oficinista& quien, const Paso& paso) const
{
    auto& borrador = quien.borrador;
    if (!borrador.lineas.empty() || !borrador.codigo.empty())
        return;
    borrador.almacen = static_cast<std::int16_t>(paso.b % 32 == 0 ? 5 : 1 + paso.b % 4);
    borrador.proveedor = 101 + static_cast<std::int32_t>(paso.c % 14);
    borrador.fecha = dia("01/01/2025").mas_dias(static_cast<std::int32_t>(paso.a % 730));
    borrador.observaciones = frases.at(paso.c / 16 % frases.size());
    borrador.franquiciado = paso.c % 7 == 0;
}

Oficina::Diferencia Oficina::linea(Oficinista& quien, const Paso& paso)
{
    empieza_cargo(quien, paso);
    const auto nueva = teclea(paso);
    quien.edicion.Aceptar_Linea(tecleada(nueva), &cuenta_de);
    quien.borrador.lineas.push_back(nueva);
    return igual_que_su_borrador(quien);
}

Oficina::Diferencia Oficina::cambia(Oficinista& quien, const Paso& paso)
{
    auto& lineas = quien.borrador.lineas;
    if (lineas.empty())
        return {};
    const auto cual = paso.a % lineas.size();
    auto& antigua = lineas[cual];
    const auto mostrada = quien.edicion.Modificar_Linea(static_cast<std::int32_t>(cual) + 1);
    if (mostrada.Unidades.crudo() != antigua.unidades || mostrada.Costo.crudo() != antigua.costo)
        return "the line taken back is not the one that was keyed in";
    auto nueva = teclea(paso);
    nueva.articulo = antigua.articulo; // the hidden account stays with the row
    quien.edicion.Aceptar_Linea(tecleada(nueva), &cuenta_de);
    antigua = nueva;
    return igual_que_su_borrador(quien);
}

Oficina::Diferencia Oficina::quita(Oficinista& quien, const Paso& paso)
{
    auto& lineas = quien.borrador.lineas;
    if (lineas.empty())
        return {};
    const auto cual = paso.a % lineas.size();
    quien.edicion.Eliminar_Linea(static_cast<std::int32_t>(cual) + 1);
    lineas.erase(lineas.begin() + static_cast<std::ptrdiff_t>(cual));
    return igual_que_su_borrador(quien);
}

Oficina::Diferencia Oficina::comenta(Oficinista& quien, const Paso& paso)
{
    auto& lineas = quien.borrador.lineas;
    if (lineas.empty())
        return {};
    const auto cual = paso.a % lineas.size();
    lineas[cual].observaciones = frases.at(paso.b % frases.size());
    quien.edicion.Comentar_Linea(static_cast<std::int32_t>(cual) + 1, lineas[cual].observaciones);
    return igual_que_su_borrador(quien);
}

Oficina::Diferencia Oficina::cancela(Oficinista& quien, const Paso&)
{
    quien.borrador = {};
    quien.edicion.Nuevo_Atipico();
    return igual_que_su_borrador(quien);
}

Oficina::Diferencia Oficina::abre(Oficinista& quien, const Paso& paso)
{
    const auto* cargo = elige(paso.a);
    if (cargo == nullptr)
        return {};
    const auto clave = clave_de(*cargo);
    const auto cabecera = lee_cabecera({ clave.Ejercicio, clave.Almacen, clave.Codigo });
    if (!cabecera || cabecera->Proveedor != cargo->proveedor || cabecera->Fecha != cargo->fecha
        || cabecera->Observ != cargo->observaciones)
        return "the header of " + clave.Codigo + " is not the one that was stored";
    quien.edicion.Nuevo_Atipico();
    lee_lineas({ clave.Ejercicio, clave.Almacen, clave.Codigo }, [&](const LineaAbierta& leida) {
        quien.edicion.Cargar_Linea(leida.linea, leida.Num_Linea, leida.CtaAtipicos);
    });
    quien.borrador = *cargo;
    quien.borrador.franquiciado = false; // which is not stored
    return igual_que_su_borrador(quien);
}

/// What the clerk does with the proposed forecasts: takes them, settles others, or gives the save up.
std::optional<std::vector<Prevision>> Oficina::acuerda(
    const Contabilizacion& datos, const Paso& paso, Crudo a_pagar, Intento& intento)
{
    const auto propuesta = GenerarPrev(datos);
    if (datos.Importe.crudo() != a_pagar)
        intento.mal = "the amount to pay is " + std::to_string(datos.Importe.crudo());
    if (!propuesta.previsiones.empty() && propuesta.suma.crudo() != a_pagar)
        intento.mal = "the forecasts do not add up";
    if (paso.accion == Accion::renuncia)
        return std::nullopt;
    std::vector<Prevision> acordadas;
    for (const auto& una : propuesta.previsiones)
        acordadas.push_back(una.prevision);
    if (paso.b % 4 == 0)
        acordadas = { { Currency::de_crudo(a_pagar - 100), 1, datos.Fecha.mas_dias(30), "57200001" },
            { Currency::de_crudo(100), 0, datos.Fecha.mas_dias(60), "" } };
    for (const auto& una : acordadas)
        intento.previsiones.push_back({ una.Importe.crudo(), una.TipoDoc, una.Vencimiento, una.Banco });
    return acordadas;
}

Oficina::Intento Oficina::intenta_guardar(Oficinista& quien, const Paso& paso)
{
    const auto& borrador = quien.borrador;
    CargoTecleado tecleado{ borrador.codigo, borrador.almacen, borrador.proveedor,
        "Proveedor " + std::to_string(borrador.proveedor), borrador.fecha, borrador.observaciones,
        borrador.franquiciado, {}, {} };
    quien.edicion.Rellenar(tecleado);
    const Crudo a_pagar = borrador.total() + borrador.impuesto();
    Intento intento;
    prepara_perdida(quien);
    intento.resultado = GuardarAtipico(quien.edicion.cargo(), tecleado,
        [&](const Contabilizacion& datos) { return acuerda(datos, paso, a_pagar, intento); });
    intento.perdida = quien.pierde_en > 0 && quien.parte->dichas.size() >= quien.pierde_en;
    intento.suerte = suerte_de(quien);
    return intento;
}

Oficina::Diferencia Oficina::guarda(Oficinista& quien, const Paso& paso)
{
    using Estado = ResultadoGuardado::Estado;
    const auto intento = intenta_guardar(quien, paso);
    const auto estado = intento.resultado.estado;
    if (quien.borrador.lineas.empty())
        return estado == Estado::SinLineas ? Diferencia() : "a charge without lines was saved";
    quien.pierde_en = 0;
    if (intento.perdida)
        vuelve_a_conectar(quien);
    if (intento.mal)
        return intento.mal;
    if (paso.accion == Accion::renuncia)
        return estado == Estado::NoAceptado || intento.perdida ? Diferencia() : "given up, it was saved";
    if (auto mal = juzga_guardado(quien, intento))
        return mal;
    auto guardado = quien.borrador;
    guardado.usuario = quien.usuario;
    guardado.hora = m_reloj->valor;
    m_modelo.guarda(guardado, intento.previsiones, intento.suerte);
    ++m_cuenta.guardados;
    return estado == Estado::Guardado ? cancela(quien, paso) : Diferencia(); // ready for the next charge
}

/// Whether a save ended as it had to, with the boxes, the code and the entry that it had to have.
Oficina::Diferencia Oficina::juzga_guardado(const Oficinista& quien, const Intento& intento) const
{
    using Estado = ResultadoGuardado::Estado;
    const bool fallido = intento.perdida && !intento.suerte.contabilidad;
    if (intento.resultado.estado != (fallido ? Estado::Fallido : Estado::Guardado))
        return "the save ended as " + std::to_string(static_cast<int>(intento.resultado.estado)) + ":"
            + en_una_linea(m_avisos->dichos);
    std::vector<std::string> titulos;
    for (const auto& aviso : m_avisos->dichos)
        titulos.push_back(aviso.titulo);
    std::vector<std::string> debidos;
    if (Modelo::empresa_contable(quien.borrador.almacen) == 0)
        debidos.emplace_back("frmCompras_Atipicos:GenerarAsiento");
    if (intento.perdida ? titulos.empty() : titulos != debidos)
        return "the clerk was shown" + en_una_linea(m_avisos->dichos);
    if (!fallido
        && (intento.resultado.Codigo != m_modelo.codigo_para(quien.borrador)
            || intento.resultado.Asiento != m_modelo.asiento_para(quien.borrador)))
        return "the charge became " + intento.resultado.Codigo + " with entry "
            + std::to_string(intento.resultado.Asiento);
    return {};
}

Oficina::Diferencia Oficina::renuncia(Oficinista& quien, const Paso& paso) { return guarda(quien, paso); }

Oficina::Diferencia Oficina::elimina(Oficinista& quien, const Paso& paso)
{
    const auto* cargo = elige(paso.a);
    if (cargo == nullptr)
        return {};
    const auto clave = cargo->clave();
    prepara_perdida(quien);
    const bool eliminado = EliminarAtipico(clave_de(*cargo));
    const bool perdida = quien.pierde_en > 0 && quien.parte->dichas.size() >= quien.pierde_en;
    quien.pierde_en = 0;
    if (perdida)
        vuelve_a_conectar(quien);
    if (eliminado == perdida || m_avisos->dichos.empty() == perdida)
        return "the deletion " + std::string(eliminado ? "was done" : "failed")
            + en_una_linea(m_avisos->dichos);
    if (eliminado)
        m_modelo.elimina(clave);
    m_cuenta.eliminados += eliminado ? 1 : 0;
    return {};
}

Oficina::Diferencia Oficina::lista(Oficinista&, const Paso& paso)
{
    const Date desde = dia("01/01/2025").mas_dias(static_cast<std::int32_t>(paso.a % 700));
    const Date hasta = desde.mas_dias(30);
    const auto almacen = static_cast<std::int16_t>(paso.b % 6);
    std::multiset<std::string> debidos;
    for (const auto& [clave, cargo] : m_modelo.cargos())
        if (cargo.fecha >= desde && cargo.fecha <= hasta && (almacen == 0 || cargo.almacen == almacen))
            debidos.insert(cargo.codigo + " " + std::to_string(cargo.almacen) + " "
                + std::to_string(cargo.total()) + " " + std::to_string(cargo.asiento));
    std::multiset<std::string> listados;
    Date anterior = hasta;
    bool en_orden = true;
    Cargar_Atipicos({ desde.texto(), hasta.texto(), almacen, 0 }, [&](const CargoListado& uno) {
        listados.insert(uno.Codigo + " " + std::to_string(uno.Cod_Almacen) + " "
            + std::to_string(uno.Importe.crudo()) + " " + std::to_string(uno.Asiento));
        en_orden = en_orden && uno.Fecha <= anterior;
        anterior = uno.Fecha;
    });
    if (listados != debidos || !en_orden)
        return "the list holds " + std::to_string(listados.size()) + " charges, not "
            + std::to_string(debidos.size()) + ", or others";
    return {};
}

Oficina::Diferencia Oficina::detalle(Oficinista&, const Paso& paso)
{
    const auto* cargo = elige(paso.a);
    if (cargo == nullptr)
        return {};
    std::size_t leidas = 0;
    bool iguales = true;
    Cargar_Detalles(clave_de(*cargo), [&](const LineaDetalle& linea) {
        iguales = iguales && leidas < cargo->lineas.size()
            && linea.Descripcion == cargo->lineas[leidas].descripcion
            && linea.Unidades.crudo() == cargo->lineas[leidas].unidades
            && linea.Precio.crudo() == cargo->lineas[leidas].costo;
        ++leidas;
    });
    if (!iguales || leidas != cargo->lineas.size())
        return "the lines of " + cargo->codigo + " are not those that were stored";
    return {};
}

Oficina::Diferencia Oficina::imprime(Oficinista& quien, const Paso& paso)
{
    const auto* cargo = elige(paso.a);
    if (cargo == nullptr)
        return {};
    const orvalin::Biblioteca biblioteca(quien.gestion, nullptr);
    const auto almacen = biblioteca.NuevoAlmacen(*quien.empresa);
    almacen->Codigo = cargo->almacen;
    const auto proveedor = biblioteca.NuevoProveedor(*quien.empresa);
    proveedor->Codigo = cargo->proveedor;
    if (!almacen->Cargar() || !proveedor->Cargar())
        return "the warehouse or the supplier of " + cargo->codigo + " is not there";
    const auto clave = clave_de(*cargo);
    const auto impreso = orvalin::CargoImpreso::lee(
        *quien.gestion, *quien.empresa, clave.Ejercicio, clave.Almacen, clave.Codigo);
    const auto documento = orvalin::documento_cargo(
        impreso, *almacen, *proveedor, orvalin::Plantilla::de_serie(), MedidorFijo());
    const auto total = texto_pantalla(Currency::de_crudo(cargo->total() + cargo->impuesto()), 2);
    bool dicho = false;
    for (const auto& uno : pruebas::textos(*documento))
        dicho = dicho || uno.find(total) != std::string::npos;
    if (!dicho || documento->titulo() != "Reclamación " + cargo->codigo)
        return "the document of " + cargo->codigo + " does not say " + total;
    return {};
}

Oficina::Diferencia Oficina::pierde(Oficinista& quien, const Paso& paso)
{
    quien.pierde_en = 1 + paso.a % 45; // some saves have fewer operations: those keep their connection
    return {};
}

void Oficina::prepara_perdida(Oficinista& quien) const
{
    quien.parte->falla_en = quien.pierde_en;
    quien.parte->conexion_perdida = true;
}

/// Of a save whose connection breaks nothing is kept: both commits are there or neither.
Suerte Oficina::suerte_de(const Oficinista& quien) const
{
    if (quien.pierde_en == 0 || quien.parte->dichas.size() < quien.pierde_en)
        return { true, true, Modelo::empresa_contable(quien.borrador.almacen) != 0 };
    return { false, false, false };
}

void Oficina::vuelve_a_conectar(Oficinista& quien)
{
    conecta(quien);
    sienta(quien);
    ++m_cuenta.perdidas;
}

std::optional<std::string> Oficina::compara() const
{
    return compara_filas(m_modelo, m_oficinistas.front().bases);
}

std::optional<std::string> Oficina::verifica() const
{
    return compara_verificacion(m_modelo, m_oficinistas.front().bases);
}

} // namespace atipicos::pruebas
