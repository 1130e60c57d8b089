#include "host/comprobacion/Revision.hpp"

#include "charges/Impuesto.hpp"
#include "host/bases/Derechos.hpp"
#include "host/bases/Version.hpp"
#include "platform/adodb/campos.hpp"
#include "runtime/Formato.hpp"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

namespace atipicos::app {

namespace {

    std::string texto_importe(Currency importe) { return texto_pantalla(importe, 2); }

    /// Whether an amount of an entry is that of the charge. The tax of an entry is exact and the one of the
    /// charge was reckoned in floating point: of large amounts they may be a cent apart.
    bool coinciden(Currency del_asiento, Currency del_cargo, const CargoLeido& cargo)
    {
        constexpr std::int64_t grande = 10'000'000'000 * Currency::escala;
        constexpr std::int64_t centimo = Currency::escala / 100;
        const auto aparte = std::abs(del_asiento.crudo() - del_cargo.crudo());
        const auto importe = cargo.importe.crudo();
        return aparte == 0 || (aparte == centimo && (importe > grande || importe < -grande));
    }

}

Revision::Revision(const bases::Bases& bases)
    : m_bases(bases)
    , m_almacenes(*bases.orvalin)
    , m_cuentas(bases)
    , m_ejercicios(*bases.bexmor)
    , m_regularizados(*bases.bexmor)
{
}

Verificacion Revision::revisa()
{
    lee_catalogos();
    lee_incompletos();
    lee_cargos();
    revisa_lineas();
    m_sin_cargo.emplace(m_almacenes, m_cuentas, *m_cargos);
    recorre_asientos(*m_bases.bexmor, [&](const auto& asiento) { revisa_asiento(asiento); });
    revisa_sin_visitar();
    reune();
    return std::move(m_resultado);
}

void Revision::lee_incompletos()
{
    if (bases::comprueba_version(*m_bases.bexmor, "Esquema", "Bexmor", Donde::aqui())
        < bases::version_con_derechos)
        return;
    for (const auto rs = adodb::consulta(
             *m_bases.bexmor, "SELECT Cod_Empresa, Cod_Ejercicio, Numero, Motivo FROM Asientos_Incompletos");
         !rs->Eof(); rs->MoveNext())
        m_incompletos[{ adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Cod_Ejercicio"),
            CLng(rs->Fields("Numero").Value()) }]
            = adodb::texto(*rs, "Motivo");
}

void Revision::lee_catalogos()
{
    for (const auto rs
         = adodb::consulta(*m_bases.orvalin, "SELECT Codigo, DecimalesImporte, EnlaceContable FROM Empresas");
         !rs->Eof(); rs->MoveNext())
        m_empresas[adodb::entero(*rs, "Codigo")]
            = { adodb::entero(*rs, "DecimalesImporte"), CLng(rs->Fields("EnlaceContable").Value()) };
    for (const auto rs = adodb::consulta(*m_bases.bexmor, "SELECT Codigo FROM Tipos_Doc"); !rs->Eof();
         rs->MoveNext())
        m_tipos_doc.insert(adodb::entero(*rs, "Codigo"));
    m_tipos_doc.insert(0); // none
    for (const auto rs = adodb::consulta(
             *m_bases.bexmor, "SELECT Cod_Empresa, Cod_Ejercicio, Numero FROM Contador_Asientos");
         !rs->Eof(); rs->MoveNext())
        m_contadores[{ adodb::entero(*rs, "Cod_Empresa"), adodb::entero(*rs, "Cod_Ejercicio") }]
            = CLng(rs->Fields("Numero").Value());
}

void Revision::difiere(const CargoLeido& cargo, const std::string& que)
{
    const auto clave = m_cargos->clave(cargo);
    m_de_cargos[clave].push_back(texto(clave) + ": " + que);
}

void Revision::lee_cargos()
{
    m_cargos.emplace(*m_bases.orvalin);
    m_resultado.cargos = m_cargos->todos().size();
}

void Revision::revisa_lineas()
{
    lee_lineas_de(
        *m_cargos, *m_bases.orvalin,
        [&](CargoLeido& cargo, const LineaLeida& linea) {
            ++m_resultado.lineas;
            m_progreso.avanza();
            if (m_en_curso.cargo != &cargo) {
                cierra_lineas();
                m_en_curso = {};
                m_en_curso.cargo = &cargo;
            }
            m_en_curso.seguidas = m_en_curso.seguidas && linea.numero == m_en_curso.ultima + 1;
            m_en_curso.ultima = linea.numero;
            m_en_curso.suma += linea.importe;
            m_en_curso.huella.agrega(linea.importe);
        },
        [&](const ClaveContenida& clave) {
            ++m_resultado.lineas;
            difiere(texto(clave) + ": tiene una línea y no tiene cabecera.");
        });
    cierra_lineas();
    for (auto& cargo : m_cargos->todos()) {
        if (!cargo.con_lineas)
            revisa_suma(cargo, {});
        revisa_cabecera(cargo);
    }
}

void Revision::cierra_lineas()
{
    if (auto* cargo = m_en_curso.cargo) {
        cargo->con_lineas = true;
        cargo->lineas = m_en_curso.huella.valor();
        revisa_suma(*cargo, m_en_curso);
    }
}

void Revision::revisa_suma(CargoLeido& cargo, const LineasEnCurso& lineas)
{
    if (lineas.ultima == 0 || !lineas.seguidas) {
        difiere(cargo, "no tiene líneas o no están numeradas de corrido.");
        cargo.completo = false;
    }
    if (lineas.suma != cargo.importe) {
        difiere(cargo,
            "importe " + texto_importe(cargo.importe) + " y líneas por " + texto_importe(lineas.suma) + ".");
        cargo.completo = false;
    }
}

void Revision::revisa_cabecera(CargoLeido& cargo)
{
    const auto impuesto
        = importe_impuesto(cargo.importe, cargo.porcentaje, m_empresas[cargo.empresa].decimales);
    if (impuesto != cargo.impuesto) {
        difiere(cargo,
            "impuesto " + texto_importe(cargo.impuesto) + " y debería ser " + texto_importe(impuesto) + ".");
        cargo.completo = false;
    }
    if (cargo.numero < 0)
        difiere(cargo, "el código no es «AT» y un número.");
    else if (m_almacenes.contador(cargo.serie()) < cargo.numero)
        difiere(cargo, "el contador de su serie no ha llegado a ese número.");
}

void Revision::revisa_apuntes(const AsientoContabilizado& asiento)
{
    const auto debe = asiento.debe();
    const auto haber = asiento.haber();
    if (debe != haber)
        difiere(texto(asiento.clave) + ": no cuadra, debe " + texto_importe(debe) + " y haber "
            + texto_importe(haber) + ".");
    if (const auto incompleto = m_incompletos.find(asiento.clave); incompleto != m_incompletos.end())
        difiere(texto(asiento.clave) + ": quedó incompleto al contabilizarlo (" + incompleto->second + ").");
    std::int32_t linea = 0;
    if (asiento.apuntes.empty()
        || !std::all_of(asiento.apuntes.begin(), asiento.apuntes.end(),
            [&](const auto& uno) { return uno.linea == ++linea; }))
        difiere(texto(asiento.clave) + ": le faltan apuntes.");
    for (const auto& una : asiento.previsiones)
        if (!m_tipos_doc.contains(una.tipo_doc))
            difiere(texto(asiento.clave) + ": su previsión " + std::to_string(una.numero)
                + " es de un tipo de documento que no existe, el " + std::to_string(una.tipo_doc) + ".");
    const auto contador = m_contadores.find({ asiento.clave.empresa, asiento.clave.ejercicio });
    if (contador == m_contadores.end() || contador->second < asiento.clave.numero)
        difiere(texto(asiento.clave) + ": el contador de asientos no ha llegado a ese número.");
}

void Revision::revisa_asiento(const AsientoContabilizado& asiento)
{
    ++m_resultado.asientos;
    m_resultado.apuntes += asiento.apuntes.size();
    m_resultado.registros += asiento.registros.size();
    m_resultado.previsiones += asiento.previsiones.size();
    m_progreso.avanza(asiento.apuntes.size());
    revisa_apuntes(asiento);
    if (asigna(asiento))
        return;
    if (m_regularizados.encuentra(asiento)) {
        if (!m_regularizados.saldado_a_mano(asiento.clave))
            m_sin_cargo->agrega_regularizado(asiento);
    } else if (asiento.es_de_un_cargo()) {
        const auto importe = asiento.apuntes.front().debe;
        if (!asiento.previsiones.empty() && asiento.suma_previsiones() != importe)
            difiere(texto(asiento.clave) + ": sus previsiones suman "
                + texto_importe(asiento.suma_previsiones()) + " y carga " + texto_importe(importe) + ".");
        m_sin_cargo->agrega(asiento);
    } else {
        m_sin_cargo->agrega_ajeno(asiento);
    }
}

/// Gives the entry to the charge that it is of, and tells the others that name it that it is not theirs.
/// False: it is no charge's.
bool Revision::asigna(const AsientoContabilizado& asiento)
{
    const auto candidatos = m_cargos->nombran(asiento.clave);
    if (candidatos.empty())
        return false;
    const auto regularizado = m_regularizados.motivo(asiento.clave);
    auto* suyo = regularizado.empty() ? m_pertenencia.dueno(asiento, candidatos, *m_cargos) : nullptr;
    const auto otro = suyo == nullptr ? std::nullopt : m_pertenencia.otro_proveedor(*suyo, asiento);
    for (const auto i : candidatos) {
        auto& cargo = m_cargos->todos()[i];
        cargo.asiento_visto = true;
        const auto su_asiento = "su " + texto(asiento.clave) + " ";
        const auto es_de = su_asiento
            + (asiento.apuntes.empty() ? "no tiene apuntes" : "es del documento " + asiento.documento());
        if (asiento.apuntes.empty() || asiento.documento() != m_cargos->codigo(cargo))
            queda_sin_asiento(cargo, es_de + ".");
        else if (!regularizado.empty())
            queda_sin_asiento(cargo, su_asiento + regularizado + ".");
        else if (&cargo != suyo)
            queda_sin_asiento(cargo, es_de + " del almacén " + std::to_string(suyo->almacen) + ".");
        else if (otro)
            queda_sin_asiento(cargo, su_asiento + "es del proveedor " + std::to_string(*otro) + ".");
        else
            cargo.con_asiento = true;
    }
    if (suyo == nullptr || !suyo->con_asiento)
        return false;
    revisa_contabilizacion(*suyo, asiento);
    return true;
}

void Revision::queda_sin_asiento(CargoLeido& cargo, const std::string& motivo)
{
    const auto clave = m_cargos->clave(cargo);
    difiere(cargo, motivo);
    m_sin_asiento[clave]
        = { clave, cargo.asiento, cargo.completo, m_ejercicios.admite(cargo.asiento.empresa, cargo.total()),
              m_ejercicios.impedimento(cargo.asiento.empresa, cargo.fecha) };
}

void Revision::revisa_contabilizacion(const CargoLeido& cargo, const AsientoContabilizado& asiento)
{
    const auto su_asiento = "su " + texto(asiento.clave);
    const auto carga = asiento.apuntes.front().debe;
    if (!coinciden(carga, cargo.total(), cargo))
        difiere(cargo,
            su_asiento + " carga " + texto_importe(carga) + " y el cargo suma " + texto_importe(cargo.total())
                + ".");
    if (asiento.fecha.solo_dia() != cargo.fecha.solo_dia())
        difiere(cargo, su_asiento + " es del " + asiento.fecha.texto() + ".");
    if (!asiento.previsiones.empty() && !coinciden(asiento.suma_previsiones(), cargo.total(), cargo))
        difiere(cargo,
            "sus previsiones suman " + texto_importe(asiento.suma_previsiones()) + " y el cargo "
                + texto_importe(cargo.total()) + ".");
    const auto& registros = asiento.registros;
    if (cargo.porcentaje == Currency() ? !registros.empty()
                                       : registros.size() != 1 || registros.front().base != cargo.importe
                || !coinciden(registros.front().cuota, cargo.impuesto, cargo))
        difiere(cargo, "el registro de impuesto de " + su_asiento + " no es el suyo.");
}

void Revision::revisa_sin_visitar()
{
    for (auto& cargo : m_cargos->todos()) {
        if (cargo.asiento_visto)
            continue;
        if (cargo.asiento.numero > 0)
            queda_sin_asiento(cargo, "su " + texto(cargo.asiento) + " no existe en Contabilidad.");
        else if (m_empresas[cargo.empresa].enlace == 1)
            queda_sin_asiento(cargo, "no tiene asiento y la empresa contabiliza sus cargos.");
    }
}

void Revision::reune()
{
    for (const auto& una : m_regularizados.diferencias())
        difiere(una);
    for (const auto& [clave, diferencias] : m_de_cargos)
        for (const auto& una : diferencias)
            difiere(una);
    for (const auto& [clave, cargo] : m_sin_asiento)
        m_resultado.sin_asiento.push_back(cargo);
    m_resultado.sin_cargo = m_sin_cargo->clasificados();
    m_resultado.saldos = m_sin_cargo->saldos();
    m_resultado.regularizados = m_regularizados.anulados();
    m_resultado.saldados = m_regularizados.a_mano();
}

} // namespace atipicos::app
