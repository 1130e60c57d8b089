#pragma once

#include "host/bases/Lugar.hpp"

#include <QStringList>

namespace atipicos::app {

/// The places whose companies this person has opened, the last one first, kept for the person on this
/// machine. An address that holds a password is none of them: it is refused before it is opened.
class EmpresasRecientes {
public:
    static constexpr int maximo = 8;

    [[nodiscard]] QStringList lista() const; ///< folders and addresses, as they are typed
    void apunta(const bases::Lugar& lugar) const; ///< it becomes the first one
    void olvida(const QString& cual) const;
};

/// What a person types as the place of a company: an address, or else a folder. Raises an error when it is
/// empty or no address that can be opened.
[[nodiscard]] bases::Lugar lugar_tecleado(const QString& texto);

} // namespace atipicos::app
