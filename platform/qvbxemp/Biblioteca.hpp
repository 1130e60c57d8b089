#pragma once

#include "platform/adodb/Connection.hpp"
#include "runtime/Currency.hpp"
#include "runtime/Date.hpp"
#include "runtime/Error.hpp"
#include "runtime/Variant.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

/// The company library of the accounting product, as far as the component uses it. Its objects are
/// filled field by field and store themselves on the accounting connection. Every operation may raise an
/// `Error` of the library.
namespace atipicos::qvbxemp {

class Biblioteca;

/// An accounting company.
class Empresa {
public:
    Empresa() = default;
    Empresa(const Empresa&) = delete;
    Empresa& operator=(const Empresa&) = delete;
    virtual ~Empresa() = default;

    std::int16_t Codigo = 0;
    std::int16_t Ejercicio = 0; ///< accounting year to work in
    Date FechaTrabajo;
    std::string UsuarioActual;
    std::shared_ptr<adodb::Connection> Conexion;

    /// Reads the company of `Codigo`; false when there is none.
    [[nodiscard]] virtual bool Cargar(Donde donde = Donde::aqui()) = 0;

    [[nodiscard]] virtual Variant Parametro(std::string_view clave, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::string CuentaBancoPago(
        Donde donde = Donde::aqui()) const = 0; ///< default bank
    [[nodiscard]] virtual int LongitudCuenta(Donde donde = Donde::aqui()) const = 0; ///< digits of an account

    /// The library that this company belongs to.
    [[nodiscard]] virtual const Biblioteca& biblioteca() const noexcept = 0;
};

/// A journal entry. Set `Fecha`, then `Crear`.
class Asiento {
public:
    Asiento() = default;
    Asiento(const Asiento&) = delete;
    Asiento& operator=(const Asiento&) = delete;
    virtual ~Asiento() = default;

    Date Fecha;
    std::int32_t Numero = 0; ///< given by `Crear`

    virtual void Crear(Donde donde = Donde::aqui()) = 0; ///< stores the entry under the next number
    [[nodiscard]] virtual std::int32_t SiguienteLinea(Donde donde = Donde::aqui()) = 0; ///< 1, 2, 3, …
};

/// One line of a journal entry. It keeps its values after `Guardar`, so that one object serves for many
/// lines.
class Apunte {
public:
    Apunte() = default;
    Apunte(const Apunte&) = delete;
    Apunte& operator=(const Apunte&) = delete;
    virtual ~Apunte() = default;

    std::int32_t Asiento = 0;
    std::int32_t Linea = 0;
    std::string Cuenta;
    std::string ConceptoAutomatico;
    std::string Concepto;
    std::string Documento;
    std::string Departamento;
    Currency Debe;
    Currency Haber;
    std::int16_t TipoImpuesto = 0; ///< 0: the line bears no tax
    Currency PorcentajeImpuesto;
    Currency BaseImpuesto;

    /// Stores the line; false when it was refused or failed, and then `error` says why.
    [[nodiscard]] virtual bool Guardar(Donde donde = Donde::aqui()) = 0;

    /// What the last refused `Guardar` left behind.
    [[nodiscard]] virtual const Error& error() const noexcept = 0;
};

/// One record of the tax register.
class RegistroImpuesto {
public:
    RegistroImpuesto() = default;
    RegistroImpuesto(const RegistroImpuesto&) = delete;
    RegistroImpuesto& operator=(const RegistroImpuesto&) = delete;
    virtual ~RegistroImpuesto() = default;

    std::int16_t Clase = 0; ///< kind of record
    std::int16_t Indicador = 0;
    std::string Documento;
    Currency Base;
    std::int16_t TipoImpuesto = 0;
    Currency Cuota;
    Currency TotalImpuesto;
    std::int32_t Asiento = 0;
    std::int32_t Linea = 0;

    virtual void Guardar(Donde donde = Donde::aqui()) = 0;
};

/// One payment forecast of an entry.
class Prevision {
public:
    Prevision() = default;
    Prevision(const Prevision&) = delete;
    Prevision& operator=(const Prevision&) = delete;
    virtual ~Prevision() = default;

    std::int32_t Asiento = 0;
    std::string Departamento;
    Currency Importe;
    std::int16_t TipoDoc = 0; ///< document type, 0 for none
    Date Vencimiento;
    std::string Banco; ///< bank account, may be empty
    std::string Cuenta; ///< account of the one who pays

    virtual void Guardar(Donde donde = Donde::aqui()) = 0;
};

struct TipoImpuesto {
    Currency Porcentaje;
    std::string Imp_CtaRep; ///< account of output tax
};

/// Accounts and tax types of one accounting company.
class ServicioCuentas {
public:
    ServicioCuentas() = default;
    ServicioCuentas(const ServicioCuentas&) = delete;
    ServicioCuentas& operator=(const ServicioCuentas&) = delete;
    virtual ~ServicioCuentas() = default;

    /// The account of `codigo` under `raiz`, padded to `longitud` digits.
    [[nodiscard]] virtual std::string FormarCuenta(
        const std::string& raiz, std::int32_t codigo, int longitud, Donde donde = Donde::aqui()) const = 0;

    /// Whether the plan of the company's year has `cuenta`.
    [[nodiscard]] virtual bool ExisteCuenta(const std::string& cuenta, Donde donde = Donde::aqui()) const = 0;

    /// Percentage and account of a tax type.
    [[nodiscard]] virtual TipoImpuesto LeerTipoImpuesto(
        std::int16_t tipo, Donde donde = Donde::aqui()) const = 0;
};

/// Makes the library's objects. Those made for a company are bound to its code, year and connection and
/// must not outlive it.
class Biblioteca {
public:
    Biblioteca() = default;
    Biblioteca(const Biblioteca&) = delete;
    Biblioteca& operator=(const Biblioteca&) = delete;
    virtual ~Biblioteca() = default;

    [[nodiscard]] virtual std::unique_ptr<Empresa> NuevaEmpresa(Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Asiento> NuevoAsiento(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Apunte> NuevoApunte(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<RegistroImpuesto> NuevoRegistroImpuesto(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Prevision> NuevaPrevision(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<ServicioCuentas> NuevoServicioCuentas(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
};

} // namespace atipicos::qvbxemp
