#pragma once

#include "runtime/Currency.hpp"

#include <array>
#include <boost/multiprecision/cpp_int.hpp>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <random>
#include <string>

namespace atipicos {

/// So that a failed comparison shows the amount.
inline void PrintTo(Currency importe, std::ostream* salida) { *salida << importe.texto(); }

/// The same answers by another way: integers without limit, and the decimal texts of the C library.
namespace pruebas {

    using Entero = boost::multiprecision::cpp_int;

    inline constexpr int casos = 100'000;

    inline Entero potencia(int exponente)
    {
        return boost::multiprecision::pow(Entero(10), static_cast<unsigned>(exponente));
    }

    /// `numerador` / `denominador`, the half away from zero.
    inline Entero redondeada(const Entero& numerador, const Entero& denominador)
    {
        const Entero magnitud = (2 * abs(numerador) + denominador) / (2 * denominador);
        return numerador < 0 ? Entero(-magnitud) : magnitud;
    }

    inline bool cabe(const Entero& diezmilesimas)
    {
        return diezmilesimas <= std::numeric_limits<std::int64_t>::max()
            && diezmilesimas >= std::numeric_limits<std::int64_t>::min();
    }

    struct Leido {
        Entero cifras;
        int exponente = 0;
        double valor = 0; ///< what the digits give back
    };

    inline Leido con_cifras(double valor, int significativas)
    {
        std::array<char, 64> texto{};
        std::snprintf(texto.data(), texto.size(), "%.*e", significativas - 1, valor);
        const std::string escrito = texto.data();
        const auto e = escrito.find('e');
        std::string mantisa = escrito.substr(escrito[0] == '-' ? 1 : 0, e - (escrito[0] == '-' ? 1 : 0));
        std::erase(mantisa, '.');
        Leido leido;
        leido.cifras = std::stoll(mantisa) * (escrito[0] == '-' ? -1 : 1);
        leido.exponente = std::atoi(escrito.c_str() + e + 1) - (significativas - 1);
        leido.valor = std::strtod(texto.data(), nullptr);
        return leido;
    }

    /// The value that a person reads in `valor`, rounded, in units of 10^-`decimales`.
    inline Entero unidades_leidas(double valor, int decimales)
    {
        Leido leido = con_cifras(valor, 15);
        if (leido.exponente > -(decimales + 1))
            for (int significativas = 16; leido.valor != valor; ++significativas)
                leido = con_cifras(valor, significativas);
        const int exponente = leido.exponente + decimales;
        if (exponente >= 0)
            return leido.cifras * potencia(exponente);
        return redondeada(leido.cifras, potencia(-exponente));
    }

    /// Display text: digits in groups of three, comma, decimals.
    inline std::string pantalla(const Entero& unidades, int decimales)
    {
        std::string cifras = Entero(abs(unidades)).str();
        const auto minimo = static_cast<std::size_t>(decimales) + 1;
        if (cifras.size() < minimo)
            cifras.insert(0, minimo - cifras.size(), '0');
        const auto enteras = cifras.size() - static_cast<std::size_t>(decimales);
        if (decimales > 0)
            cifras.insert(enteras, ",");
        for (auto lugar = enteras; lugar > 3; lugar -= 3)
            cifras.insert(lugar - 3, ".");
        return (unidades < 0 ? "-" : "") + cifras;
    }

    /// Cases that are the same in every run.
    class Azar {
    public:
        explicit Azar(std::uint64_t semilla)
            : m_motor(semilla)
        {
        }

        int hasta(int limite) ///< 0 to `limite` - 1
        {
            return static_cast<int>(m_motor() % static_cast<std::uint64_t>(limite));
        }

        Currency moneda() ///< of any magnitude and sign
        {
            const int menguas = hasta(4) == 0 ? 0 : hasta(64); // often near the limits, so that sums overflow
            return Currency::de_crudo(static_cast<std::int64_t>(m_motor()) >> menguas);
        }

        /// Values near the middle between two roundings, floating-point remains, and amounts.
        double dudoso(int decimales)
        {
            switch (hasta(4)) {
            case 0:
                return empate(decimales);
            case 1: {
                double valor = empate(decimales);
                for (int pasos = hasta(4) + 1; pasos > 0; --pasos)
                    valor = std::nextafter(valor, hasta(2) == 0 ? -HUGE_VAL : HUGE_VAL);
                return valor;
            }
            case 2:
                return moneda().a_double();
            default:
                return (hasta(2'000'001) - 1'000'000) / 100.0 * (hasta(2'500) / 100.0) / 100;
            }
        }

    private:
        double empate(int decimales)
        {
            std::string texto = hasta(2) == 0 ? "-" : "";
            texto += std::to_string(static_cast<std::int64_t>(m_motor() >> (10 + hasta(54)))) + ".";
            for (int i = 0; i < decimales; ++i)
                texto += static_cast<char>('0' + hasta(10));
            return std::strtod((texto + "5").c_str(), nullptr);
        }

        std::mt19937_64 m_motor;
    };

}
} // namespace atipicos
