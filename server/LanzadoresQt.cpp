#include "context/frmclsCompras_Atipicos.hpp"
#include "context/frmclsComprasAtipVisor.hpp"
#include "printing/clsView.hpp"
#include "printing/frmclsCopiasImpresion.hpp"
#include "server/AplicacionQt.hpp"
#include "server/Contexto.hpp"
#include "server/Declara.hpp"
#include "server/ReportAnfitrion.hpp"

namespace atipicos::server {

namespace {

    constexpr bool opcional = true;

    std::vector<Argumento> argumentos_show() { return { { "Modal", opcional }, { "OwnerForm", opcional } }; }

    // A window of the host is no window of ours: it is accepted and cannot be the owner.
    template <class C> void muestra(C& lanzador, std::int16_t modal, const Despacho& /*duena*/)
    {
        aplicacion();
        lanzador.Show(modal);
    }

    template <class C> std::vector<Miembro> contexto_orvalin()
    {
        return { solo_asigna<[](C&, const Despacho& d) { contexto::pone_EmpresaOrvalin(d); }>(
                     "EmpresaOrvalin"),
            solo_asigna<[](C&, const Despacho& d) { contexto::pone_ConexionOrvalin(d); }>(
                "ConexionOrvalin") };
    }

    template <class C> std::vector<Miembro> contexto_entero()
    {
        auto miembros = contexto_orvalin<C>();
        miembros.push_back(
            solo_asigna<[](C&, const Despacho& d) { contexto::pone_EmpresaBexmor(d); }>("EmpresaBexmor"));
        miembros.push_back(
            solo_asigna<[](C&, const Despacho& d) { contexto::pone_ConexionBexmor(d); }>("ConexionBexmor"));
        return miembros;
    }

    template <class C> Miembro show()
    {
        return metodo<[](C& c, std::int16_t modal, const Despacho& duena) { muestra(c, modal, duena); }>(
            "Show", argumentos_show());
    }

    Clase declara_vista()
    {
        using C = clsView;
        return { publica("clsView"),
            {
                solo_asigna<[](C& c, const Despacho& report) {
                    c.set_Report(report ? std::make_shared<ReportAnfitrion>(report) : nullptr);
                }>("Report"),
                metodo<[](C& c, bool modal, std::int16_t zoom) {
                    aplicacion();
                    c.Cargar(modal, zoom);
                }>("Cargar", { { "bolModal" }, { "intZoom", opcional } }),
            },
            nuevo<C> };
    }

    template <auto Campo> Miembro destino(std::string_view nombre)
    {
        using Dato = typename detalle::ClaseDeCampo<decltype(Campo)>::Dato;
        Miembro miembro;
        miembro.nombre = nombre;
        miembro.tipo = TipoDe<Dato>::tipo;
        miembro.lee = [](void* objeto, Llamada& llamada) {
            llamada.resultado() = detalle::valor(static_cast<frmclsCopiasImpresion*>(objeto)->Destino.*Campo);
        };
        miembro.pone = [](void* objeto, Llamada& llamada) {
            static_cast<frmclsCopiasImpresion*>(objeto)->Destino.*Campo = llamada.asignado<Dato>();
        };
        return miembro;
    }

    Clase declara_copias()
    {
        using C = frmclsCopiasImpresion;
        Clase clase{ publica("frmclsCopiasImpresion"), contexto_orvalin<C>(), nuevo<C> };
        clase.miembros.push_back(show<C>());
        clase.miembros.push_back(destino<&DestinoImpresion::Impresora>("Impresora"));
        clase.miembros.push_back(destino<&DestinoImpresion::Dispositivo>("Dispositivo"));
        clase.miembros.push_back(destino<&DestinoImpresion::Dispositivo2>("Dispositivo2"));
        clase.miembros.push_back(destino<&DestinoImpresion::Ajuste>("Ajuste"));
        return clase;
    }

    Clase declara_visor()
    {
        using C = frmclsComprasAtipVisor;
        Clase clase{ publica("frmclsComprasAtipVisor"), contexto_entero<C>(), nuevo<C> };
        clase.miembros.push_back(show<C>());
        clase.miembros.push_back(campo<&C::Ejercicio>("Ejercicio"));
        clase.miembros.push_back(campo<&C::Almacen_Inicial>("Almacen_Inicial"));
        clase.miembros.push_back(campo<&C::Proveedor_Inicial>("Proveedor_Inicial"));
        clase.miembros.push_back(campo<&C::Fecha_Inicial>("Fecha_Inicial"));
        clase.miembros.push_back(campo<&C::Fecha_Final>("Fecha_Final"));
        return clase;
    }

    Clase declara_editor()
    {
        using C = frmclsCompras_Atipicos;
        Clase clase{ publica("frmclsCompras_Atipicos"), contexto_entero<C>(), nuevo<C> };
        clase.miembros.push_back(show<C>());
        return clase;
    }

}

const Clase* clase_con_ventanas(std::string_view nombre)
{
    static const std::vector<Clase> todas{ declara_vista(), declara_copias(), declara_visor(),
        declara_editor() };
    for (const auto& clase : todas)
        if (clase.publica.nombre == nombre)
            return &clase;
    return nullptr;
}

} // namespace atipicos::server
