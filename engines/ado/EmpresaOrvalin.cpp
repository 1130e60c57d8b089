#include "engines/ado/EmpresaOrvalin.hpp"

#include "engines/ado/Conversion.hpp"

#include <utility>

namespace atipicos::ado {

using automation::Despacho;

namespace {

    /// The value of a member of the host's object, held meanwhile: the host may lend another one while it
    /// answers.
    template <class... Argumentos>
    Variant lee(const Despacho& objeto, const char* miembro, Donde donde, const Argumentos&... argumentos)
    {
        return con_anfitrion(donde,
            [&, suyo = objeto] { return variant_de(suyo.llama(miembro, argumentos...).get(), donde); });
    }

    std::string texto(const Despacho& objeto, const char* miembro, Donde donde)
    {
        const Variant valor = lee(objeto, miembro, donde);
        return valor.es_nulo() ? std::string() : CStr(valor, donde);
    }

    template <class Ficha> class FichaAnfitrion : public Ficha {
    public:
        explicit FichaAnfitrion(Despacho ficha)
            : m_ficha(std::move(ficha))
        {
        }

        bool Cargar(Donde donde = Donde::aqui()) override
        {
            con_anfitrion(donde, [&] { m_ficha.pon("Codigo", this->Codigo); });
            const bool hay = CBool(lee(m_ficha, "Cargar", donde), donde);
            for (auto [campo, valor] :
                { std::pair{ "Nombre", &this->Nombre }, { "Domicilio", &this->Domicilio },
                    { "CodigoPostal", &this->CodigoPostal }, { "Poblacion", &this->Poblacion } })
                *valor = hay ? texto(m_ficha, campo, donde) : std::string();
            return hay;
        }

        [[nodiscard]] const Despacho& anfitrion() const noexcept { return m_ficha; }

    private:
        Despacho m_ficha;
    };

    using AlmacenAnfitrion = FichaAnfitrion<qvoremp::Almacen>;

    class ProveedorAnfitrion final : public FichaAnfitrion<qvoremp::Proveedor> {
    public:
        using FichaAnfitrion::FichaAnfitrion;

        bool Cargar(Donde donde = Donde::aqui()) override
        {
            const bool hay = FichaAnfitrion::Cargar(donde);
            NIF = hay ? texto(anfitrion(), "NIF", donde) : std::string();
            return hay;
        }
    };

    class ImpresionAnfitrion final : public qvoremp::ImpresionCargo {
    public:
        explicit ImpresionAnfitrion(Despacho impresion)
            : m_impresion(std::move(impresion))
        {
        }

        void Imprimir(Donde donde = Donde::aqui()) override
        {
            con_anfitrion(donde, [&] {
                m_impresion.pon("Ejercicio", Ejercicio);
                m_impresion.pon("Almacen", almacen ? almacen->Codigo : std::int16_t{ 0 });
                m_impresion.pon("Codigo", Codigo);
                m_impresion.pon("Proveedor", proveedor ? proveedor->Codigo : 0);
                m_impresion.pon("Impresora", Impresora);
                m_impresion.pon("Dispositivo", Dispositivo);
                m_impresion.llama("Imprimir");
            });
        }

    private:
        Despacho m_impresion;
    };

    template <class Clase> auto nueva(const qvoremp::Empresa& empresa, const char* miembro, Donde donde)
    {
        const auto* suya = dynamic_cast<const EmpresaOrvalin*>(&empresa);
        if (suya == nullptr)
            throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
        return con_anfitrion(
            donde, [&] { return std::make_unique<Clase>(suya->anfitrion().objeto(miembro)); });
    }

}

EmpresaOrvalin::EmpresaOrvalin(Despacho empresa)
    : m_empresa(std::move(empresa))
{
}

std::int16_t EmpresaOrvalin::Codigo(Donde donde) const
{
    return CInt(lee(m_empresa, "Codigo", donde), donde);
}

std::string EmpresaOrvalin::Nombre(Donde donde) const { return texto(m_empresa, "Nombre", donde); }

Variant EmpresaOrvalin::Parametro(std::string_view clave, Donde donde) const
{
    return lee(m_empresa, "Parametro", donde, clave);
}

Currency EmpresaOrvalin::PorcentajeImpuesto(std::int16_t tipo, Donde donde) const
{
    return CCur(lee(m_empresa, "PorcentajeImpuesto", donde, tipo), donde);
}

int EmpresaOrvalin::DecimalesImporte(Donde donde) const
{
    return CInt(lee(m_empresa, "DecimalesImporte", donde), donde);
}

int EmpresaOrvalin::DecimalesCosto(Donde donde) const
{
    return CInt(lee(m_empresa, "DecimalesCosto", donde), donde);
}

int EmpresaOrvalin::DecimalesPrecio(Donde donde) const
{
    return CInt(lee(m_empresa, "DecimalesPrecio", donde), donde);
}

std::int16_t EmpresaOrvalin::AlmacenDefecto(Donde donde) const
{
    return CInt(lee(m_empresa, "AlmacenDefecto", donde), donde);
}

std::int32_t EmpresaOrvalin::EnlaceContable(Donde donde) const
{
    return CLng(lee(m_empresa, "EnlaceContable", donde), donde);
}

std::int16_t EmpresaOrvalin::EmpresaProveedores(Donde donde) const
{
    return CInt(lee(m_empresa, "EmpresaProveedores", donde), donde);
}

std::int32_t EmpresaOrvalin::RaizProveedores(Donde donde) const
{
    return CLng(lee(m_empresa, "RaizProveedores", donde), donde);
}

std::unique_ptr<qvoremp::Almacen> BibliotecaOrvalin::NuevoAlmacen(
    const qvoremp::Empresa& empresa, Donde donde) const
{
    return nueva<AlmacenAnfitrion>(empresa, "NuevoAlmacen", donde);
}

std::unique_ptr<qvoremp::Proveedor> BibliotecaOrvalin::NuevoProveedor(
    const qvoremp::Empresa& empresa, Donde donde) const
{
    return nueva<ProveedorAnfitrion>(empresa, "NuevoProveedor", donde);
}

std::unique_ptr<qvoremp::ImpresionCargo> BibliotecaOrvalin::NuevaImpresionCargo(
    const qvoremp::Empresa& empresa, Donde donde) const
{
    return nueva<ImpresionAnfitrion>(empresa, "NuevaImpresionCargo", donde);
}

} // namespace atipicos::ado
