#pragma once

#include <cstdint>
#include <libpq-fe.h>
#include <string>
#include <vector>

namespace atipicos::postgresql {

class Enlace;

/// A statement that the server keeps prepared. Its text is sent to it with its first values, and again to a
/// server that does not know it: behind another line, or one that has forgotten.
class Preparada {
public:
    Preparada() = default;
    Preparada(const Preparada&) = delete;
    Preparada& operator=(const Preparada&) = delete;
    ~Preparada(); ///< the server is told with what it is told next

    void olvida() noexcept; ///< the server is to forget it, and is sent it again with its next values

    std::vector<Oid> tipos; ///< of its values; 0: the server finds out

private:
    friend class Enlace;

    Enlace* m_enlace = nullptr; ///< over which it was sent; null: it was not
    std::uint64_t m_memoria = 0; ///< to which memory of the server
    std::string m_nombre;
};

} // namespace atipicos::postgresql
