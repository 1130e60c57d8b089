// A host on Windows that opens the component's windows: each of the launchers that it is given, one after the
// other, over the sample company in a new file. What a person does with them is up to her; at the end it
// tells what was stored.
//     Ventanas FILE LAUNCHER...
#include "automation/Componente.hpp"
#include "tests/server/EmpresaAnfitriona.hpp"

#include <objbase.h>

#include <cstdio>
#include <string>

namespace {

using namespace atipicos::automation;
using atipicos::pruebas::con_valor;

Despacho crea_por_nombre(const std::string& nombre)
{
    GUID clsid;
    void* objeto = nullptr;
    if (FAILED(CLSIDFromProgID(utf16(nombre).c_str(), &clsid))
        || FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, iid_despacho, &objeto)))
        throw Fallo(429, "Ventanas", "no such class: " + nombre);
    return Despacho::adopta(static_cast<IDispatch*>(objeto));
}

/// The management company of the sample, whose charges are not posted.
Despacho empresa()
{
    return Anfitrion::crea({ con_valor("Codigo", 1), con_valor("Nombre", "Muestra"),
        con_valor("DecimalesImporte", 2), con_valor("DecimalesCosto", 4), con_valor("DecimalesPrecio", 4),
        con_valor("AlmacenDefecto", 1), con_valor("EnlaceContable", 0), con_valor("EmpresaProveedores", 1),
        con_valor("RaizProveedores", 400), con_valor("PorcentajeImpuesto", 7),
        { "Parametro", [](const Argumentos& a) {
             const auto clave = a.valor(0).texto();
             return clave == "UsuarioActual" || clave == "GenerarPrevPagos" || clave == "OficinaCentral"
                     || clave == "Proveedores_AtipcosImpuesto"
                 ? Valor("1")
                 : Valor();
         } } });
}

/// A member that is set, and whose value nobody reads.
Anfitrion::Miembro se_pone(const char* nombre)
{
    return { nombre, [](const Argumentos&) { return Valor(); }, [](const Argumentos&) { return Valor(); } };
}

/// The accounting company of the sample, as far as the forecasts of a charge ask it.
Despacho contable()
{
    return Anfitrion::crea({ con_valor("Parametro", "Bexmor"),
        { "NuevaEmpresa", [](const Argumentos&) {
             return Anfitrion::crea(
                 { se_pone("Codigo"), se_pone("Ejercicio"), se_pone("FechaTrabajo"), se_pone("UsuarioActual"),
                     se_pone("Conexion"), con_valor("Cargar", true), con_valor("CuentaBancoPago", "57200001"),
                     con_valor("LongitudCuenta", 8),
                     { "NuevoServicioCuentas",
                         [](const Argumentos&) {
                             return Anfitrion::crea({ con_valor("ExisteCuenta", true) }).valor();
                         } } })
                 .valor();
         } } });
}

void abre(int argc, char** argv)
{
    const auto bases = crea_por_nombre("AtipicosPrueba.Bases");
    const auto muestra = bases.objeto("AbreMuestra", argv[1]);
    const auto editor = crea_por_nombre("QVORComprasAtip.frmclsCompras_Atipicos");
    editor.pon("EmpresaOrvalin", empresa().valor());
    editor.pon("ConexionOrvalin", muestra.llama("Orvalin"));
    editor.pon("EmpresaBexmor", contable().valor());
    editor.pon("ConexionBexmor", muestra.llama("Bexmor"));
    for (int i = 2; i < argc; ++i) {
        const std::string nombre = argv[i];
        crea_por_nombre("QVORComprasAtip." + nombre).llama("Show", 1);
        std::printf("cerrada: %s\n", nombre.c_str());
        std::fflush(stdout);
    }
    std::printf("guardado: %s\n",
        bases
            .llama("Primero",
                "SELECT Codigo || ' ' || Cod_Almacen || ' ' || Proveedor || ' ' || Fecha || ' ' || Importe "
                "|| ' ' || "
                "Impuesto_Importe || ' ' || Observ FROM Proveedores_Cargos_Atipicos")
            .texto()
            .c_str());
    std::printf("línea: %s\n",
        bases
            .llama("Primero",
                "SELECT Cod_Articulo || ' ' || Descripcion || ' ' || Unidades || ' ' || Precio || ' ' || "
                "Observ FROM "
                "Proveedores_Cargos_Atipicos_Lineas")
            .texto()
            .c_str());
    for (const char* una : { "EmpresaOrvalin", "ConexionOrvalin", "EmpresaBexmor", "ConexionBexmor" })
        editor.pon(una, Despacho().valor());
}

}

int main(int argc, char** argv)
{
    if (argc < 3 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 2;
    int resultado = 0;
    try {
        abre(argc, argv);
    } catch (const Fallo& fallo) {
        std::printf("MAL %d %s: %s\n", fallo.numero(), fallo.fuente().c_str(), fallo.what());
        resultado = 1;
    }
    CoUninitialize();
    return resultado;
}
