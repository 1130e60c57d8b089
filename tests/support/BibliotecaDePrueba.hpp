#pragma once

#include "platform/qvbxemp/Biblioteca.hpp"
#include "platform/qvoremp/Empresa.hpp"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// A management company whose answers are plain fields.
class EmpresaDePrueba final : public qvoremp::Empresa {
public:
    std::int16_t codigo = 1;
    std::map<std::string, Variant, std::less<>> parametros;
    std::map<std::int16_t, Currency> porcentajes;
    int decimales_importe = 2;
    int decimales_costo = 4;
    int decimales_precio = 3;
    std::int32_t enlace = 1;
    std::int16_t empresa_proveedores = 1;
    mutable std::vector<std::string> preguntas; ///< configuration keys asked for, in order

    std::int16_t Codigo(Donde) const override { return codigo; }
    std::string Nombre(Donde) const override { return "Empresa de prueba"; }
    Variant Parametro(std::string_view clave, Donde) const override;
    Currency PorcentajeImpuesto(std::int16_t tipo, Donde donde) const override;
    int DecimalesImporte(Donde) const override { return decimales_importe; }
    int DecimalesCosto(Donde) const override { return decimales_costo; }
    int DecimalesPrecio(Donde) const override { return decimales_precio; }
    std::int16_t AlmacenDefecto(Donde) const override { return 1; }
    std::int32_t EnlaceContable(Donde) const override { return enlace; }
    std::int16_t EmpresaProveedores(Donde) const override { return empresa_proveedores; }
    std::int32_t RaizProveedores(Donde) const override { return 400; }
};

/// What a library of the accounting product has been asked to store, in words, and what it refuses.
struct Diario {
    std::vector<std::string> escrito;
    std::set<std::string> cuentas_rechazadas;
    bool falla_registro = false;
    bool falla_prevision = false;

    /// How the company was set up when the first object of an entry was asked for.
    struct Empresa {
        const adodb::Connection* conexion = nullptr;
        std::int16_t ejercicio = 0;
        Date fecha_trabajo;
    };
    std::optional<Empresa> empresa;
};

/// An accounting library that writes a diary instead of tables. Companies 1 (accounts of 8 digits) and 2
/// (9 digits) exist; tax types 1 (7 %) and 2 (3 %) do, and no other.
class BibliotecaDePrueba final : public qvbxemp::Biblioteca {
public:
    std::shared_ptr<Diario> diario = std::make_shared<Diario>();

    std::unique_ptr<qvbxemp::Empresa> NuevaEmpresa(Donde) const override;
    std::unique_ptr<qvbxemp::Asiento> NuevoAsiento(const qvbxemp::Empresa& empresa, Donde) const override;
    std::unique_ptr<qvbxemp::Apunte> NuevoApunte(const qvbxemp::Empresa& empresa, Donde) const override;
    std::unique_ptr<qvbxemp::RegistroImpuesto> NuevoRegistroImpuesto(
        const qvbxemp::Empresa& empresa, Donde) const override;
    std::unique_ptr<qvbxemp::Prevision> NuevaPrevision(const qvbxemp::Empresa& empresa, Donde) const override;
    std::unique_ptr<qvbxemp::ServicioCuentas> NuevoServicioCuentas(
        const qvbxemp::Empresa& empresa, Donde) const override;
};

} // namespace atipicos::pruebas
