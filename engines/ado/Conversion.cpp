#include "engines/ado/Conversion.hpp"

#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <utility>

namespace atipicos::ado {

// In here, because on Windows these are macros and global names.
using namespace automation;

namespace {

    template <class Numero> Variant entero(Numero numero)
    {
        if (std::in_range<std::int32_t>(numero))
            return Variant(static_cast<std::int32_t>(numero));
        return Variant(static_cast<double>(numero));
    }

    /// The double that reads as the single does: 0.1 and not 0.10000000149.
    double doble(float valor)
    {
        std::array<char, 32> texto{};
        const auto fin = std::to_chars(texto.begin(), texto.end(), valor).ptr;
        double leido = valor;
        std::from_chars(texto.begin(), fin, leido);
        return leido;
    }

    /// 96 bits of digits, a decimal scale and a sign, laid over the whole value.
    struct Decimal96 {
        std::uint16_t tipo;
        std::uint8_t escala;
        std::uint8_t signo;
        std::uint32_t altas;
        std::uint64_t bajas;
    };

    /// An amount where it has no more than four decimals and fits, whatever its scale says; else a double.
    Variant decimal(const VARIANT& valor)
    {
        Decimal96 partes{};
        std::memcpy(&partes, &valor, sizeof partes);
        __extension__ using Ancho = unsigned __int128;
        auto cifras = static_cast<Ancho>(partes.altas) << 64 | partes.bajas;
        int escala = partes.escala;
        for (; escala > 0 && cifras % 10 == 0; --escala) // 7.500000 is 7.5
            cifras /= 10;
        const bool negativo = (partes.signo & 0x80) != 0;

        if (escala <= 4) {
            auto crudo = cifras; // of 96 bits, which leave room for the four decimals
            for (int i = escala; i < 4; ++i)
                crudo *= 10;
            if (crudo <= static_cast<Ancho>(std::numeric_limits<std::int64_t>::max())) {
                const auto importe = static_cast<std::int64_t>(crudo);
                return Currency::de_crudo(negativo ? -importe : importe);
            }
        }
        std::string texto = "e-" + std::to_string(escala);
        for (; cifras != 0; cifras /= 10)
            texto.insert(texto.begin(), static_cast<char>('0' + static_cast<int>(cifras % 10)));
        double aproximado = 0;
        std::from_chars(texto.data(), texto.data() + texto.size(), aproximado);
        return negativo ? -aproximado : aproximado;
    }

}

Variant variant_de(const VARIANT& valor, Donde donde)
{
    const VARIANT visto = sin_referencia(valor);
    switch (visto.vt) {
    case VT_EMPTY:
        return {};
    case VT_NULL:
        return Nulo{};
    case VT_BOOL:
        return visto.boolVal != VARIANT_FALSE;
    case VT_I1:
        return entero<int>(visto.cVal);
    case VT_UI1:
        return entero<int>(visto.bVal);
    case VT_I2:
        return entero<int>(visto.iVal);
    case VT_UI2:
        return entero<int>(visto.uiVal);
    case VT_I4:
    case VT_INT:
        return entero<std::int64_t>(visto.lVal);
    case VT_UI4:
    case VT_UINT:
        return entero<std::uint64_t>(visto.ulVal);
    case VT_I8:
        return entero(std::int64_t{ visto.llVal });
    case VT_UI8:
        return entero(std::uint64_t{ visto.ullVal });
    case VT_R4:
        return doble(visto.fltVal);
    case VT_R8:
        return visto.dblVal;
    case VT_CY:
        return Currency::de_crudo(visto.cyVal.int64);
    case VT_DATE:
        return Date::de_automatizacion(visto.date, donde);
    case VT_DECIMAL:
        return decimal(visto);
    case VT_BSTR:
        return utf8(visto.bstrVal);
    default:
        throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
    }
}

Valor valor_de(const Variant& valor, Donde donde)
{
    const struct {
        Donde donde;
        Valor operator()(std::monostate) const { return {}; }
        Valor operator()(Nulo) const { return Valor::nulo(); }
        Valor operator()(bool v) const { return v; }
        Valor operator()(std::int32_t v) const { return v; }
        Valor operator()(double v) const { return v; }
        Valor operator()(Currency v) const { return moneda_de(v); }
        Valor operator()(Date v) const { return fecha_de(v); }
        Valor operator()(const std::string& v) const { return v; }
        Valor operator()(const std::shared_ptr<Objeto>&) const
        {
            throw Error::de_ejecucion(numero_error::tipos_no_coinciden, donde);
        }
    } visita{ donde };
    return std::visit(visita, valor.valor());
}

std::string descripcion_de(const Fallo& fallo)
{
    const std::string dicha = fallo.what();
    return !dicha.empty()
        ? dicha
        : "El anfitrión da el error " + std::to_string(fallo.numero()) + " y no dice por qué.";
}

Moneda moneda_de(Currency importe) noexcept { return { importe.crudo() }; }

Fecha fecha_de(Date fecha) noexcept { return { fecha.automatizacion() }; }

} // namespace atipicos::ado
