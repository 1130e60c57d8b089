#include "context/frmclsCompras_Atipicos.hpp"
#include "context/frmclsComprasAtipVisor.hpp"
#include "context/trap.hpp"
#include "printing/clsView.hpp"
#include "printing/frmclsCopiasImpresion.hpp"
#include "server/AplicacionQt.hpp"
#include "server/Contexto.hpp"
#include "server/Declara.hpp"
#include "server/DuenaAnfitrionaQt.hpp"
#include "server/ReportAnfitrion.hpp"

namespace atipicos::server {

namespace {

    constexpr bool opcional = true;

    std::vector<Argumento> argumentos_show() { return { { "Modal", opcional }, { "OwnerForm", opcional } }; }

    /// How an error box calls what opens the window of a launcher.
    template <class C> constexpr const char* etiqueta = nullptr;
    template <> constexpr const char* etiqueta<frmclsCompras_Atipicos> = "frmclsCompras_Atipicos:Show";
    template <> constexpr const char* etiqueta<frmclsComprasAtipVisor> = "frmclsComprasAtipVisor:Show";
    template <> constexpr const char* etiqueta<frmclsCopiasImpresion> = "frmclsCopiasImpresion:Show";
    template <> constexpr const char* etiqueta<clsView> = "clsView:Cargar";

    /// What comes before the trap of the launcher itself is told as what comes in it.
    template <class C, class Abre> void abre(Abre&& abre_ventana)
    {
        trap(etiqueta<C>, [&] {
            aplicacion();
            abre_ventana();
        });
    }

    /// Connections are passed by reference; whoever passes them by value is understood as well.
    constexpr Argumento conexion{ "valor", false, true };

    template <class C> std::vector<Miembro> contexto_orvalin()
    {
        return { solo_asigna<[](C&, const Despacho& d) { contexto::pone_EmpresaOrvalin(d); }>(
                     "EmpresaOrvalin"),
            solo_asigna<[](C&, const Despacho& d) { contexto::pone_ConexionOrvalin(d); }>(
                "ConexionOrvalin", conexion) };
    }

    template <class C> std::vector<Miembro> contexto_entero()
    {
        auto miembros = contexto_orvalin<C>();
        miembros.push_back(
            solo_asigna<[](C&, const Despacho& d) { contexto::pone_EmpresaBexmor(d); }>("EmpresaBexmor"));
        miembros.push_back(solo_asigna<[](C&, const Despacho& d) { contexto::pone_ConexionBexmor(d); }>(
            "ConexionBexmor", conexion));
        return miembros;
    }

    template <class C> Miembro show()
    {
        return metodo<[](C& c, std::int16_t modal, const Despacho& duena) {
            abre<C>([&] { c.Show(modal, duena_de(duena)); });
        }>("Show", argumentos_show());
    }

    Clase declara_vista()
    {
        using C = clsView;
        return { publica("clsView"),
            {
                solo_asigna<[](C& c, const Despacho& report) {
                    c.set_Report(report ? std::make_shared<ReportAnfitrion>(report) : nullptr);
                }>("Report", { "crxRep" }),
                metodo<[](C& c, bool modal, std::int16_t zoom) { abre<C>([&] { c.Cargar(modal, zoom); }); }>(
                    "Cargar", { { "bolModal" }, { "intZoom", opcional } }),
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
