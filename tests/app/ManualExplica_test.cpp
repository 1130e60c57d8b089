// The messages that the manual explains are those of the program, and all of them.
#include "tests/app/ManualEscrito.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <regex>
#include <set>

namespace atipicos {
namespace {

    namespace fs = std::filesystem;
    using pruebas::apartados_de;
    using pruebas::pagina_del_manual;

    /// The texts of a piece of source, with "…" for everything between them.
    std::string textos(std::string_view fuente)
    {
        std::string salida;
        for (std::size_t i = 0; i < fuente.size(); ++i) {
            const char c = fuente[i];
            if (c == '/' && i + 1 < fuente.size() && fuente[i + 1] == '/') {
                i = std::min(fuente.find('\n', i), fuente.size());
            } else if (c == '\'' && i + 2 < fuente.size()) {
                i = fuente[i + 1] == '\\' ? i + 3 : fuente[i + 2] == '\'' ? i + 2 : i;
            } else if (c == '"') {
                for (++i; i < fuente.size() && fuente[i] != '"'; ++i) {
                    const bool escapado = fuente[i] == '\\' && i + 1 < fuente.size();
                    i += escapado ? 1 : 0;
                    salida += escapado && (fuente[i] == 'n' || fuente[i] == 'r') ? ' ' : fuente[i];
                }
            } else if (std::string_view(" \n\t+,").find(c) == std::string_view::npos
                && !salida.ends_with("…")) {
                salida += "…";
            }
        }
        return std::regex_replace(salida, std::regex(" +"), " ");
    }

    std::vector<fs::path> fuentes(std::initializer_list<const char*> carpetas)
    {
        std::vector<fs::path> ficheros;
        for (const auto* carpeta : carpetas)
            for (const auto& uno : fs::recursive_directory_iterator(fs::path(ATIPICOS_FUENTES) / carpeta))
                if (uno.path().extension() == ".cpp" || uno.path().extension() == ".hpp")
                    ficheros.push_back(uno.path());
        return ficheros;
    }

    /// What is given to the functions that tell a person something: their whole arguments, of all sources.
    std::vector<std::string> mensajes_de_las_fuentes()
    {
        static const std::regex llamada(
            R"(\b(throw Error|avisa|confirma|pregunta|rehusa|rehusa_ficha|no_se_envia|falla|mal|MalUsada|repara|agrega|difiere|queda_sin_asiento)\s*\()");
        static const std::regex frase("[a-záéíóúñ]{2,} [a-záéíóúñ]");
        std::vector<std::string> mensajes;
        for (const auto& fichero : fuentes(
                 { "charges", "posting", "editor", "browser", "printing", "controls", "context", "host" })) {
            const auto fuente = pruebas::lee_fichero(fichero);
            for (std::sregex_iterator una(fuente.begin(), fuente.end(), llamada), fin; una != fin; ++una) {
                const auto desde = static_cast<std::size_t>(una->position() + una->length());
                auto hasta = desde;
                for (int hondo = 1; hondo > 0 && hasta < fuente.size(); ++hasta) {
                    if (fuente[hasta] == '"')
                        while (fuente[++hasta] != '"')
                            hasta += fuente[hasta] == '\\' ? 1U : 0U;
                    hondo += fuente[hasta] == '(' ? 1 : fuente[hasta] == ')' ? -1 : 0;
                }
                auto mensaje = textos(std::string_view(fuente).substr(desde, hasta - desde - 1));
                if (std::regex_search(mensaje, frase))
                    mensajes.push_back(std::move(mensaje));
            }
        }
        return mensajes;
    }

    /// The headings of messages, each in its parts between the "…".
    std::vector<std::vector<std::string>> mensajes_del_manual()
    {
        std::vector<std::vector<std::string>> todos;
        for (const auto& [titulo, texto] : apartados_de(pagina_del_manual("mensajes"), "###")) {
            EXPECT_GT(texto.size(), 12U) << "what to do is not told: " << titulo;
            std::vector<std::string> trozos;
            static const std::regex separador(R"(\s*…\s*)");
            const auto limpio = std::regex_replace(titulo, std::regex(R"(\\)"), "");
            for (std::sregex_token_iterator uno(limpio.begin(), limpio.end(), separador, -1), fin; uno != fin;
                 ++uno)
                if (uno->length() > 1) {
                    std::string trozo = *uno;
                    trozo.erase(trozo.find_last_not_of('.') + 1);
                    trozos.push_back(std::move(trozo));
                }
            todos.push_back(std::move(trozos));
        }
        return todos;
    }

    bool en_orden(const std::vector<std::string>& trozos, const std::string& texto)
    {
        std::size_t lugar = 0;
        for (const auto& trozo : trozos) {
            lugar = texto.find(trozo, lugar);
            if (lugar == std::string::npos)
                return false;
            lugar += trozo.size();
        }
        return !trozos.empty();
    }

    std::string sin_mayuscula(std::string texto)
    {
        std::transform(texto.begin(), texto.end(), texto.begin(),
            [](unsigned char c) { return static_cast<char>(c < 128 ? std::tolower(c) : c); });
        return texto;
    }

    /// The name of a control and its caption.
    bool es_de_un_control(const std::string& mensaje)
    {
        return mensaje.rfind("…txt", 0) == 0 || mensaje.rfind("cmd", 0) == 0 || mensaje.rfind("mnu", 0) == 0;
    }

    TEST(ManualExplica, every_message_of_the_program_is_explained)
    {
        // Parts of others, states in a table, and the caption of a file dialog.
        const std::set<std::string> partes{ " Compare los cargos.", " No se ha registrado nada.",
            "… del almacén ….", "… es del ….", "…registrada…ya registrada", "…Asientos anulados" };
        auto del_manual = mensajes_del_manual();
        for (auto& trozos : del_manual)
            std::transform(trozos.begin(), trozos.end(), trozos.begin(), &sin_mayuscula);
        int vistos = 0;
        for (const auto& mensaje : mensajes_de_las_fuentes()) {
            if (partes.contains(mensaje) || mensaje.find("Documento PDF (*.pdf)") != std::string::npos
                || es_de_un_control(mensaje))
                continue;
            ++vistos;
            EXPECT_TRUE(std::any_of(del_manual.begin(), del_manual.end(),
                [&](const auto& trozos) { return en_orden(trozos, sin_mayuscula(mensaje)); }))
                << "docs/manual/mensajes.md does not explain: " << mensaje;
        }
        EXPECT_GT(vistos, 120);
    }

    TEST(ManualExplica, every_message_that_is_explained_is_one_of_the_program)
    {
        std::vector<std::string> dichos;
        for (const auto& fichero : fuentes({ "charges", "posting", "editor", "browser", "printing",
                 "controls", "context", "host", "engines", "runtime" }))
            dichos.push_back(sin_mayuscula(textos(pruebas::lee_fichero(fichero))));
        const auto esta = [&](const std::vector<std::string>& trozos) {
            return std::any_of(dichos.begin(), dichos.end(), [&](const auto& fichero) {
                return std::all_of(trozos.begin(), trozos.end(), [&](const auto& trozo) {
                    return fichero.find(sin_mayuscula(trozo)) != std::string::npos;
                });
            });
        };
        const auto del_manual = mensajes_del_manual();
        EXPECT_GT(del_manual.size(), 150U);
        for (const auto& trozos : del_manual)
            EXPECT_TRUE(esta(trozos)) << "no source says: " << testing::PrintToString(trozos);
    }

}
}
