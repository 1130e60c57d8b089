#include "tests/integracion/Banco.hpp"

#include "charges/clsAtipico.hpp"
#include "charges/Impuesto.hpp"
#include "posting/GenerarPrev.hpp"

#include <array>
#include <utility>

namespace atipicos::pruebas {

ResultadoGuardado guarda_un_cargo(
    const std::string& codigo, std::int16_t almacen, const std::string& observaciones)
{
    clsAtipico cargo;
    CargoTecleado tecleado{ codigo, almacen, 104, "Conservas La Graciosa, S.A.", dia("21/11/2026"),
        observaciones, false, {}, {} };
    for (const auto* costo : { "5.6325", "1.1975", "12.5" }) {
        const Currency importe = importe_linea(moneda("12"), moneda(costo));
        cargo.Lineas->Add(1006, "Lata abollada", moneda("12"), moneda(costo));
        tecleado.Cargos.push_back({ importe, "" });
        tecleado.Total += importe;
    }
    return GuardarAtipico(cargo, tecleado, [](const Contabilizacion& datos) {
        std::vector<Prevision> previsiones;
        for (const auto& propuesta : GenerarPrev(datos).previsiones)
            previsiones.push_back(propuesta.prevision);
        return std::optional(previsiones);
    });
}

Banco::Banco(const Sede& sede)
    : m_muestra(sede.muestra())
{
    m_bases = bases::abre_bases(m_muestra->lugar());
    conecta();
}

Banco::Banco(const bases::Lugar& lugar)
    : Banco(bases::abre_bases(lugar))
{
}

Banco::Banco(bases::Bases bases)
    : m_bases(std::move(bases))
{
    conecta();
}

void Banco::conecta()
{
    const auto gestion = std::make_shared<ConexionEspia>("gestion", m_bases.orvalin, parte);
    const auto contabilidad = std::make_shared<ConexionEspia>("contabilidad", m_bases.bexmor, parte);
    m_biblioteca = std::make_unique<bexmor::Biblioteca>(contabilidad);
    std::shared_ptr<qvbxemp::Empresa> contable = m_biblioteca->NuevaEmpresa();
    contable->Codigo = 1;
    if (!contable->Cargar())
        throw std::runtime_error("the sample has no accounting company 1");

    modComun::set_EmpresaOrvalin(
        std::make_shared<orvalin::Empresa>(m_bases.orvalin, std::int16_t{ 1 }, std::int32_t{ 1 }));
    modComun::set_ConexionOrvalin(gestion);
    modComun::set_EmpresaBexmor(contable);
    modComun::set_ConexionBexmor(contabilidad);
    modComun::set_MsgBox(avisos);
    const auto reloj = std::make_shared<RelojDePrueba>();
    reloj->valor = dia_y_hora("21/11/2026", 9, 5, 3);
    modComun::set_Reloj(reloj);
    parte->dichas.clear();
}

Banco::~Banco()
{
    vacia_contexto();
    m_biblioteca.reset();
    m_bases = {}; // before what they are connected to goes
}

ResultadoGuardado Banco::guarda(
    const std::string& codigo, std::int16_t almacen, const std::string& observaciones)
{
    return guarda_un_cargo(codigo, almacen, observaciones);
}

Variant Banco::consulta(const std::string& sql) const
{
    auto rs = m_bases.orvalin->CreateRecordset();
    rs->Open(sql, adodb::CursorType::Static, adodb::LockType::ReadOnly);
    return rs->Eof() ? Variant() : rs->Fields(std::size_t{ 0 }).Value();
}

Estado Banco::estado() const
{
    Estado estado;
    for (const auto* tabla :
        { "Proveedores_Cargos_Atipicos", "Proveedores_Cargos_Atipicos_Lineas", "Bexmor.dbo.Asientos",
            "Bexmor.dbo.Apuntes", "Bexmor.dbo.Registro_Impuestos", "Bexmor.dbo.Previsiones" })
        estado[tabla] = CLng(consulta(std::string("SELECT COUNT(*) FROM ") + tabla));
    estado["contador de cargos"]
        = CLng(consulta("SELECT ISNULL(SUM(Numero), 0) FROM Contador_Proveedores_Cargos_Atipicos"));
    estado["contador de asientos"]
        = CLng(consulta("SELECT ISNULL(SUM(Numero), 0) FROM Bexmor.dbo.Contador_Asientos"));
    return estado;
}

std::vector<std::string> Banco::titulos() const
{
    std::vector<std::string> titulos;
    for (const auto& aviso : avisos->dichos)
        titulos.push_back(aviso.titulo);
    return titulos;
}

} // namespace atipicos::pruebas
