#pragma once

#include "platform/report/Lienzo.hpp"

namespace atipicos::pruebas {

/// Every character is as wide as half the height of its type, so that widths can be reckoned by hand.
class MedidorFijo final : public Medidor {
public:
    Medida ancho(std::string_view texto, const Letra& letra) const override
    {
        Medida caracteres = 0;
        for (const char c : texto)
            if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U)
                ++caracteres;
        return caracteres * letra.cuerpo / 2;
    }
};

} // namespace atipicos::pruebas
