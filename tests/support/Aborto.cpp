#include "tests/support/Aborto.hpp"

#include "runtime/Error.hpp"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <exception>
#include <execinfo.h>
#include <iostream>
#include <memory>
#include <unistd.h>
#include <utility>

namespace {

constexpr int marcos_como_mucho = 64;
thread_local std::array<void*, marcos_como_mucho>
    marcos; ///< who called whom when the last exception was raised
thread_local int cuantos_marcos = 0;

}

#if !defined(__SANITIZE_ADDRESS__)
// Stands before the library's own. Whoever handles an exception and raises it again, as QTest does, has taken
// the calls down by then: they are noted here.
extern "C" [[noreturn]] void __cxa_throw(void* objeto, void* tipo, void (*destruye)(void*)); // NOLINT
void __cxa_throw(void* objeto, void* tipo, void (*destruye)(void*)) // NOLINT
{
    using Funcion = void (*)(void*, void*, void (*)(void*));
    static const auto verdadera = reinterpret_cast<Funcion>(dlsym(RTLD_NEXT, "__cxa_throw"));
    cuantos_marcos = backtrace(marcos.data(), marcos_como_mucho);
    verdadera(objeto, tipo, destruye);
    std::abort();
}
#endif

namespace atipicos::pruebas {

namespace {

    std::function<std::string()>& prueba_en_curso()
    {
        static std::function<std::string()> cual;
        return cual;
    }

    std::string lo_que_es()
    {
        try {
            if (const auto excepcion = std::current_exception())
                std::rethrow_exception(excepcion);
        } catch (const Error& error) {
            return error.descripcion() + " (" + error.donde().fichero() + ":"
                + std::to_string(error.donde().linea()) + ")";
        } catch (const std::exception& error) {
            return error.what();
        } catch (...) {
            return "una excepción que no dice nada";
        }
        return "sin excepción";
    }

    /// The places of the sources, innermost first, that stand in this program.
    std::string lineas()
    {
        std::string orden;
        for (int i = 1; i < cuantos_marcos; ++i) { // the first is where they are noted
            Dl_info donde{};
            Dl_info esta{};
            if (dladdr(marcos[static_cast<std::size_t>(i)], &donde) == 0
                || dladdr(reinterpret_cast<void*>(&di_donde_al_abortar), &esta) == 0
                || donde.dli_fbase != esta.dli_fbase)
                continue;
            if (orden.empty())
                orden = "addr2line -Cfips -e /proc/" + std::to_string(getpid()) + "/exe";
            const auto dentro = static_cast<char*>(marcos[static_cast<std::size_t>(i)])
                - static_cast<char*>(donde.dli_fbase) - 1; // the call itself, not what comes after it
            std::array<char, 24> numero{};
            static_cast<void>(std::snprintf(
                numero.data(), numero.size(), " 0x%tx", dentro)); // NOLINT: as addr2line reads it
            orden += numero.data();
        }
        if (orden.empty())
            return {};
        struct Cierra {
            void operator()(FILE* flujo) const noexcept { pclose(flujo); }
        };
        const std::unique_ptr<FILE, Cierra> flujo(popen((orden + " 2>/dev/null").c_str(), "r"));
        std::string texto;
        std::array<char, 4096> linea{};
        while (flujo && std::fgets(linea.data(), linea.size(), flujo.get()) != nullptr)
            if (const std::string una = linea.data(); una.find("??") == std::string::npos)
                texto += "    " + una;
        return texto;
    }

    void termina()
    {
        std::cerr << "\nABORTADA " << prueba_en_curso()() << ": " << lo_que_es() << '\n'
                  << lineas() << std::flush;
        std::abort();
    }

}

void di_donde_al_abortar(std::function<std::string()> prueba)
{
    prueba_en_curso() = std::move(prueba);
    std::set_terminate(termina);
}

} // namespace atipicos::pruebas
