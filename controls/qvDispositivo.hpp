#pragma once

#include <QComboBox>

namespace atipicos {

/// Chooses one of the output devices of the management product by its code.
class qvDispositivo : public QComboBox {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(qvDispositivo)
public:
    explicit qvDispositivo(QWidget* parent = nullptr);

    void Prepara(); ///< the devices there are, none of them chosen

    [[nodiscard]] std::int16_t Codigo() const; ///< that of "none" while nothing is chosen
    void set_Codigo(std::int16_t codigo); ///< an unknown code leaves nothing chosen

    /// Without printers in the system that device cannot be chosen, and says why.
    void set_HayImpresoras(bool hay);
};

} // namespace atipicos
