#pragma once

#include <QComboBox>

#include <string>

namespace atipicos {

/// Chooses one of the printers of the system; says so when there is none.
class qvImpresoras : public QComboBox {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvImpresoras)
public:
    explicit qvImpresoras(QWidget* parent = nullptr);

    void Prepara(); ///< the printers that the system has now, its default one chosen
    void Prepara(const QStringList& impresoras, const QString& predeterminada); ///< these ones

    [[nodiscard]] bool Hay() const noexcept { return m_hay; } ///< any printer at all

    [[nodiscard]] std::string Nombre() const; ///< empty when there is none
    void set_Nombre(const std::string& nombre); ///< one that is not there changes nothing

    /// The number of the chosen printer in the list, from 1; 0 when there is none.
    [[nodiscard]] std::int16_t Ajuste() const;

private:
    bool m_hay = false;
};

} // namespace atipicos
