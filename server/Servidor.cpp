#include "server/Servidor.hpp"

#include "automation/Despacho.hpp"
#include "context/modComun.hpp"
#include "server/Avisos.hpp"

#include <ctime>
#include <mutex>
#include <thread>

namespace atipicos::server::servidor {

namespace {

    std::mutex cerrojo; ///< of the two below
    long retenciones = 0;
    std::thread::id dueno;
    bool preparado = false;

    /// When the process ends, what the host lent may be gone, its interpreter with it: it is not released.
    struct FinDelProceso {
        FinDelProceso() = default;
        FinDelProceso(const FinDelProceso&) = delete;
        FinDelProceso& operator=(const FinDelProceso&) = delete;
        ~FinDelProceso() { automation::Despacho::proceso_acaba = true; }
    };

    class RelojSistema final : public Reloj {
    public:
        [[nodiscard]] Date ahora() const override
        {
            const std::time_t segundos = std::time(nullptr);
            std::tm local{};
#ifdef _WIN32
            localtime_s(&local, &segundos);
#else
            localtime_r(&segundos, &local);
#endif
            const auto dia = Date::de_dia(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
            return Date(dia.value().instante() + std::chrono::hours(local.tm_hour)
                + std::chrono::minutes(local.tm_min) + std::chrono::seconds(local.tm_sec));
        }
    };

}

void retiene() noexcept
{
    const std::lock_guard guarda(cerrojo);
    if (retenciones++ == 0)
        dueno = std::this_thread::get_id();
}

void suelta() noexcept
{
    const std::lock_guard guarda(cerrojo);
    --retenciones;
}

bool en_uso() noexcept
{
    const std::lock_guard guarda(cerrojo);
    return retenciones != 0;
}

bool hilo_ajeno() noexcept
{
    const std::lock_guard guarda(cerrojo);
    return retenciones != 0 && dueno != std::this_thread::get_id();
}

void prepara()
{
    if (preparado)
        return;
    modComun::set_MsgBox(nuevos_avisos());
    modComun::set_Reloj(std::make_shared<RelojSistema>());
    static const FinDelProceso fin; // made after the references, gone before them
    preparado = true;
}

void olvida() noexcept
{
    if (!preparado || automation::Despacho::proceso_acaba)
        return;
    modComun::set_EmpresaOrvalin(nullptr);
    modComun::set_ConexionOrvalin(nullptr);
    modComun::set_EmpresaBexmor(nullptr);
    modComun::set_ConexionBexmor(nullptr);
    modComun::set_BibliotecaOrvalin(nullptr);
}

} // namespace atipicos::server::servidor
