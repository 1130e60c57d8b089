#include "tests/simulacion/Modelo.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace atipicos::pruebas {

namespace {

    constexpr Crudo escala = 10'000;
    constexpr Crudo centimo = 100;

    /// The nearest whole number of quotients, halves away from zero.
    Crudo reparte(Crudo dividendo, Crudo divisor)
    {
        const Crudo magnitud = dividendo < 0 ? -dividendo : dividendo;
        const Crudo cociente = (magnitud * 2 + divisor) / (divisor * 2);
        return dividendo < 0 ? -cociente : cociente;
    }

    std::string n(std::int64_t numero) { return std::to_string(numero); }

    struct Cuentas {
        std::string proveedor;
        std::string deudor;
        std::string deuda;
    };

    /// What the sample company says: the supplier's own accounts, else root and code in the plan's length.
    Cuentas cuentas_de(std::int32_t proveedor, std::int16_t empresa)
    {
        const std::string relleno = empresa == 1 ? "00" : "000";
        const auto formada = [&](const char* raiz) { return raiz + relleno + n(proveedor); };
        Cuentas cuentas{ formada("400"), formada("440"), formada("521") };
        if (proveedor == 110)
            cuentas = { "40009110", "44009110", "52109110" };
        if (proveedor == 111)
            cuentas.deudor = "44009111";
        return cuentas;
    }

    std::string cuenta_de_ingresos(std::int32_t articulo, std::int16_t almacen)
    {
        if (articulo == 1003)
            return "75900010";
        if (articulo == 1025)
            return "75900011";
        return (almacen <= 2 ? "7590000" : "75900000") + n(almacen);
    }

}

std::string fila_de(const char* tabla, const std::vector<std::string>& celdas)
{
    std::string fila = tabla;
    for (const auto& celda : celdas)
        fila += "|" + celda;
    return fila;
}

Crudo LineaModelo::importe() const { return reparte(reparte(unidades * costo, escala), centimo) * centimo; }

Crudo CargoModelo::total() const
{
    Crudo suma = 0;
    for (const auto& linea : lineas)
        suma += linea.importe();
    return suma;
}

Crudo CargoModelo::impuesto() const { return reparte(total() * 7, 100 * centimo) * centimo; }

std::int16_t Modelo::empresa_contable(std::int16_t almacen)
{
    constexpr std::array<std::int16_t, 6> de_almacen{ 0, 1, 1, 2, 2, 0 };
    return de_almacen.at(static_cast<std::size_t>(almacen));
}

std::string Modelo::codigo_para(const CargoModelo& cargo) const
{
    if (!cargo.codigo.empty())
        return cargo.codigo;
    const auto lugar = m_numeros.find({ cargo.fecha.anio(), cargo.almacen });
    return "AT" + n(lugar == m_numeros.end() ? cargo.fecha.anio() % 100 * 10'000 + 1 : lugar->second + 1);
}

std::int32_t Modelo::asiento_para(const CargoModelo& cargo) const
{
    const auto empresa = empresa_contable(cargo.almacen);
    if (empresa == 0)
        return 0;
    const auto lugar = m_numeros_de_asiento.find({ empresa, cargo.fecha.anio() });
    return lugar == m_numeros_de_asiento.end() ? 1 : lugar->second + 1;
}

void Modelo::guarda(CargoModelo cargo, const std::vector<PrevisionModelo>& previsiones, const Suerte& suerte)
{
    const bool nuevo = cargo.codigo.empty();
    const auto empresa = empresa_contable(cargo.almacen);
    const auto ejercicio = cargo.fecha.anio();
    cargo.codigo = codigo_para(cargo);
    cargo.asiento = suerte.asiento_dado ? asiento_para(cargo) : 0;
    if (suerte.gestion) {
        if (nuevo)
            m_numeros[{ ejercicio, cargo.almacen }] = std::stoi(cargo.codigo.substr(2));
        m_cargos[cargo.clave()] = cargo;
    }
    if (suerte.contabilidad && cargo.asiento != 0) {
        m_numeros_de_asiento[{ empresa, ejercicio }] = cargo.asiento;
        m_asientos[{ empresa, ejercicio, cargo.asiento }] = { cargo, previsiones };
    }
}

void Modelo::elimina(const ClaveModelo& clave) { m_cargos.erase(clave); }

std::vector<std::string> Modelo::filas() const
{
    std::vector<std::string> filas;
    for (const auto& [clave, cargo] : m_cargos) {
        filas.push_back(fila_de("cargo",
            { n(clave.ejercicio), n(clave.almacen), clave.codigo, n(cargo.proveedor), cargo.fecha.texto(),
                n(cargo.total()), n(cargo.asiento), n(empresa_contable(cargo.almacen)), "2026",
                n(cargo.usuario), cargo.hora.texto_regional(), cargo.observaciones, n(7 * escala),
                n(cargo.impuesto()) }));
        int numero = 0;
        for (const auto& linea : cargo.lineas)
            filas.push_back(fila_de("línea",
                { n(clave.ejercicio), n(clave.almacen), clave.codigo, n(++numero), n(linea.articulo),
                    linea.descripcion, n(linea.unidades), n(linea.costo), linea.observaciones }));
    }
    for (const auto& [serie, numero] : m_numeros)
        filas.push_back(fila_de("contador", { n(serie.first), n(serie.second), n(numero) }));
    for (const auto& [serie, numero] : m_numeros_de_asiento)
        filas.push_back(fila_de("contador de asientos", { n(serie.first), n(serie.second), n(numero) }));
    for (const auto& [clave, asiento] : m_asientos)
        filas_de_asiento(clave, asiento, filas);
    std::sort(filas.begin(), filas.end());
    return filas;
}

void Modelo::filas_de_asiento(
    const ClaveAsientoModelo& clave, const AsientoModelo& asiento, std::vector<std::string>& filas) const
{
    const auto& cargo = asiento.cargo;
    const auto [empresa, ejercicio, numero] = clave;
    const std::vector<std::string> cual{ n(empresa), n(ejercicio), n(numero) };
    const auto agrega = [&](const char* tabla, std::vector<std::string> celdas) {
        celdas.insert(celdas.begin(), cual.begin(), cual.end());
        filas.push_back(fila_de(tabla, celdas));
    };
    const auto cuentas = cuentas_de(cargo.proveedor, empresa);
    const auto& del_proveedor = cargo.franquiciado ? cuentas.deuda : cuentas.proveedor;
    const Crudo todo = cargo.total() + cargo.impuesto();
    int linea = 0;
    const auto apunte = [&](const std::string& cuenta, Crudo debe, Crudo haber, Crudo base) {
        agrega("apunte", { n(++linea), cuenta, cargo.codigo, n(debe), n(haber), n(base) });
    };

    agrega("asiento", { cargo.fecha.texto(), n(cargo.usuario) });
    apunte(cuentas.deudor, todo, 0, 0);
    for (const auto& una : cargo.lineas)
        apunte(cuenta_de_ingresos(una.articulo, cargo.almacen), 0, una.importe(), una.importe());
    apunte(empresa == 1 ? "47700007" : "477000007", 0, cargo.impuesto(), 0);
    agrega(
        "impuesto", { n(linea), cargo.codigo, n(cargo.total()), n(cargo.impuesto()), n(cargo.impuesto()) });
    apunte(del_proveedor, todo, 0, 0);
    apunte(cuentas.deudor, 0, todo, 0);
    int prevista = 0;
    for (const auto& una : asiento.previsiones)
        agrega("previsión",
            { n(++prevista), del_proveedor, n(una.importe), n(una.tipo), una.vencimiento.texto(),
                una.banco });
}

std::set<ClaveModelo> Modelo::sin_asiento() const
{
    std::set<ClaveModelo> huerfanos;
    for (const auto& [clave, cargo] : m_cargos) {
        const auto lugar
            = m_asientos.find({ empresa_contable(cargo.almacen), clave.ejercicio, cargo.asiento });
        if (lugar == m_asientos.end() || lugar->second.cargo.clave() != clave)
            huerfanos.insert(clave);
    }
    return huerfanos;
}

} // namespace atipicos::pruebas
