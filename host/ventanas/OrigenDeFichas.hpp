#pragma once

#include "host/fichas/Escritura.hpp"

#include <QString>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace atipicos::app {

/// One box of a record's form.
struct CampoDeFicha {
    const char* nombre; ///< of the control
    QString titulo; ///< with its underlined letter
    int maximo = 0; ///< letters
    bool numero = false;
    std::vector<std::pair<int, QString>> elegibles = {}; ///< by their numbers; none: it is typed
    QString pista = {}; ///< what it means that nothing is typed
};

/// The records that `frmFichas` keeps: their values as texts, the code first. What it refuses is an `Error`
/// that says why.
class OrigenDeFichas {
public:
    OrigenDeFichas() = default;
    OrigenDeFichas(const OrigenDeFichas&) = delete;
    OrigenDeFichas& operator=(const OrigenDeFichas&) = delete;
    virtual ~OrigenDeFichas() = default;

    [[nodiscard]] virtual QString titulo() const = 0; ///< "Proveedores"
    [[nodiscard]] virtual QString uno() const = 0; ///< "proveedor"
    [[nodiscard]] virtual std::vector<CampoDeFicha> campos() const = 0;
    [[nodiscard]] virtual QStringList columnas() const = 0;
    [[nodiscard]] virtual std::vector<QStringList> filas() const = 0; ///< under `columnas`
    [[nodiscard]] virtual QStringList valores(int codigo) const = 0; ///< under `campos`
    [[nodiscard]] virtual QStringList nueva() const = 0; ///< the same of one with the next code
    virtual void guarda(const QStringList& valores) = 0;
    virtual void elimina(int codigo) = 0;
};

[[nodiscard]] std::unique_ptr<OrigenDeFichas> origen_de_proveedores(AmbitoDeFichas ambito);
[[nodiscard]] std::unique_ptr<OrigenDeFichas> origen_de_articulos(AmbitoDeFichas ambito);

} // namespace atipicos::app
