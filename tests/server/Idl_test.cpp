// The type library's source says letter by letter what the tables of the classes say.
#include "server/Clase.hpp"

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace atipicos::server {
namespace {

    std::string texto_de(const GUID& id)
    {
        std::array<char, 37> texto{};
        std::snprintf(texto.data(), texto.size(), "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
            unsigned{ id.Data1 }, unsigned{ id.Data2 }, unsigned{ id.Data3 }, unsigned{ id.Data4[0] },
            unsigned{ id.Data4[1] }, unsigned{ id.Data4[2] }, unsigned{ id.Data4[3] },
            unsigned{ id.Data4[4] }, unsigned{ id.Data4[5] }, unsigned{ id.Data4[6] },
            unsigned{ id.Data4[7] });
        return texto.data();
    }

    std::string nombre_de(Tipo tipo)
    {
        static constexpr std::array nombres{ "void", "short", "long", "CURRENCY", "DATE", "BSTR",
            "VARIANT_BOOL", "IDispatch*" };
        return nombres.at(static_cast<std::size_t>(tipo));
    }

    std::string escrito(const Argumento& argumento, const std::string& tipo)
    {
        return std::string("[in") + (argumento.por_referencia ? ", out" : "")
            + (argumento.opcional ? ", optional" : "") + "] " + tipo + (argumento.por_referencia ? "*" : "")
            + " " + std::string(argumento.nombre);
    }

    void escribe_miembro(std::ostream& idl, const Miembro& miembro, DISPID numero)
    {
        const std::string id = "        [id(" + std::to_string(numero);
        const std::string nombre(miembro.nombre);
        const std::string tipo = nombre_de(miembro.tipo);
        if (miembro.es_metodo) {
            idl << id << ")] " << tipo << " " << nombre << "(";
            std::string separador;
            for (const auto& argumento : miembro.argumentos) {
                idl << separador << escrito(argumento, nombre_de(argumento.tipo));
                separador = ", ";
            }
            idl << ");\n";
            return;
        }
        if (miembro.lee != nullptr)
            idl << id << "), propget] " << tipo << " " << nombre << "();\n";
        if (miembro.pone != nullptr)
            idl << id << "), " << (miembro.tipo == Tipo::Objeto ? "propputref" : "propput") << "] void "
                << nombre << "(" << escrito(miembro.asignado, tipo) << ");\n";
    }

    std::string idl()
    {
        std::ostringstream idl;
        idl << "// Type library of QVORComprasAtip: its public classes, their members in order.\n"
               "import \"oaidl.idl\";\n\n"
               "[uuid(d3390125-5bdd-445d-8696-fb1a53fa8f77), version(1.0), helpstring(\"QVORComprasAtip\")]\n"
               "library QVORComprasAtip\n{\n    importlib(\"stdole2.tlb\");\n";
        for (const auto* clase : clases()) {
            const std::string nombre(clase->publica.nombre);
            idl << "\n    [uuid(" << texto_de(clase->publica.iid) << ")]\n    dispinterface _" << nombre
                << "\n    {\n        properties:\n        methods:\n";
            for (std::size_t i = 0; i < clase->miembros.size(); ++i)
                escribe_miembro(idl, clase->miembros[i], numero_de(*clase, i));
            if (clase->elemento != nullptr)
                idl << "        [id(-4), restricted] IUnknown* _NewEnum();\n";
            idl << "    };\n\n    [uuid(" << texto_de(clase->publica.clsid) << ")]\n    coclass " << nombre
                << "\n    {\n        [default] dispinterface _" << nombre << ";\n    };\n";
        }
        idl << "};\n";
        return idl.str();
    }

    TEST(Idl, the_file_says_what_the_classes_are)
    {
        std::ifstream fichero(ATIPICOS_FUENTES "/server/QVORComprasAtip.idl");
        std::stringstream escrito;
        escrito << fichero.rdbuf();
        EXPECT_EQ(escrito.str(), idl()) << "to write it anew: " << idl();
    }

}
}
