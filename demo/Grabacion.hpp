#pragma once

#include <QString>
#include <QStringList>

#include <filesystem>
#include <string>

class QWidget;

namespace atipicos::demo {

/// The pictures of a session, numbered in the order in which they are taken, and what is wrong with the
/// windows on them that can be measured.
class Grabacion {
public:
    explicit Grabacion(std::filesystem::path carpeta); ///< where the pictures go

    /// Takes the picture of a window under that name. An error when it cannot be written.
    void captura(QWidget& ventana, const std::string& nombre);

    /// What was found on the way: windows larger than the screen, texts and buttons that are cut.
    [[nodiscard]] const QStringList& faltas() const noexcept { return m_faltas; }

private:
    void mide(QWidget& ventana, const QString& nombre);

    std::filesystem::path m_carpeta;
    int m_numero = 0;
    QStringList m_faltas;
};

} // namespace atipicos::demo
