#include "server/Frontera.hpp"

#include "runtime/Error.hpp"
#include "server/Llamada.hpp"

#include <new>

namespace atipicos::server {

namespace {

    HRESULT resultado_de(std::int32_t numero) noexcept
    {
        switch (numero) {
        case numero_error::desbordamiento:
            return DISP_E_OVERFLOW;
        case numero_error::memoria_insuficiente:
            return E_OUTOFMEMORY;
        case numero_error::tipos_no_coinciden:
            return DISP_E_TYPEMISMATCH;
        default:
            return codigo_de(numero);
        }
    }

}

HRESULT resultado_en_curso() noexcept
{
    try {
        throw;
    } catch (const Llamada::Malo& malo) {
        return malo.codigo;
    } catch (const Error& error) {
        return resultado_de(error.numero());
    } catch (const Fallo& fallo) {
        return resultado_de(fallo.numero());
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

} // namespace atipicos::server
