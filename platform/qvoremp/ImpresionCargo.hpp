#pragma once

#include "platform/qvoremp/Empresa.hpp"

#include <cstdint>
#include <memory>
#include <string>

namespace atipicos::qvoremp {

/// The output devices of the management product, by their 16-bit codes.
namespace dispositivo {
    inline constexpr std::int16_t ninguno = 0; ///< printing on it does nothing
    inline constexpr std::int16_t impresora = 1;
    inline constexpr std::int16_t pantalla = 2;
    inline constexpr std::int16_t fichero_pdf = 3;
    inline constexpr std::int16_t correo = 4;
}

/// A warehouse of a management company. Set `Codigo`, then `Cargar`.
class Almacen {
public:
    Almacen() = default;
    Almacen(const Almacen&) = delete;
    Almacen& operator=(const Almacen&) = delete;
    virtual ~Almacen() = default;

    std::int16_t Codigo = 0;
    std::string Nombre;
    std::string Domicilio;
    std::string CodigoPostal;
    std::string Poblacion;

    /// Reads the warehouse of `Codigo`; false, and all else empty, when there is none.
    virtual bool Cargar(Donde donde = Donde::aqui()) = 0;
};

/// A supplier of a management company. Set `Codigo`, then `Cargar`.
class Proveedor {
public:
    Proveedor() = default;
    Proveedor(const Proveedor&) = delete;
    Proveedor& operator=(const Proveedor&) = delete;
    virtual ~Proveedor() = default;

    std::int32_t Codigo = 0;
    std::string Nombre;
    std::string NIF;
    std::string Domicilio;
    std::string CodigoPostal;
    std::string Poblacion;

    /// Reads the supplier of `Codigo`; false, and all else empty, when there is none.
    virtual bool Cargar(Donde donde = Donde::aqui()) = 0;
};

/// Prints the document of one charge. Fill it, then `Imprimir`, again with another device if wanted.
class ImpresionCargo {
public:
    ImpresionCargo() = default;
    ImpresionCargo(const ImpresionCargo&) = delete;
    ImpresionCargo& operator=(const ImpresionCargo&) = delete;
    virtual ~ImpresionCargo() = default;

    std::int16_t Ejercicio = 0;
    std::string Codigo;
    std::shared_ptr<const Almacen> almacen; ///< its code is part of the charge's key
    std::shared_ptr<const Proveedor> proveedor;
    std::string Impresora; ///< empty: the default one
    std::int16_t Dispositivo = dispositivo::ninguno;

    /// Raises an `Error` when there is no such charge, or it cannot be printed on that device.
    virtual void Imprimir(Donde donde = Donde::aqui()) = 0;
};

/// Makes the library's objects. Those made for a company must not outlive it.
class Biblioteca {
public:
    Biblioteca() = default;
    Biblioteca(const Biblioteca&) = delete;
    Biblioteca& operator=(const Biblioteca&) = delete;
    virtual ~Biblioteca() = default;

    [[nodiscard]] virtual std::unique_ptr<Almacen> NuevoAlmacen(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Proveedor> NuevoProveedor(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
    [[nodiscard]] virtual std::unique_ptr<ImpresionCargo> NuevaImpresionCargo(
        const Empresa& empresa, Donde donde = Donde::aqui()) const = 0;
};

} // namespace atipicos::qvoremp
