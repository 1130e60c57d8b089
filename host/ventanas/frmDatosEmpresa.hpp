#pragma once

#include "controls/Formulario.hpp"
#include "host/bases/EmpresaPropia.hpp"

class QFormLayout;
class QLabel;
class QLineEdit;

namespace atipicos::app {

/// Asks for what must be known of a company before its first charge. What is missing is told in the dialog.
class frmDatosEmpresa final : public Formulario {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmDatosEmpresa)
public:
    explicit frmDatosEmpresa(QWidget* parent = nullptr);

    [[nodiscard]] bases::DatosEmpresa Datos() const; ///< after it was accepted

protected:
    void keyPressEvent(QKeyEvent* tecla) override;

private:
    [[nodiscard]] QLineEdit* agrega(QFormLayout& caja, const char* nombre, const QString& titulo, int maximo);
    void hace_empresa(QFormLayout& caja);
    void hace_proveedor(QFormLayout& caja);
    void acepta();

    QLineEdit* m_nombre = nullptr;
    QLineEdit* m_nif = nullptr;
    QLineEdit* m_domicilio = nullptr;
    QLineEdit* m_codigo_postal = nullptr;
    QLineEdit* m_poblacion = nullptr;
    QLineEdit* m_provincia = nullptr;
    QLineEdit* m_almacen = nullptr;
    QLineEdit* m_usuario = nullptr;
    QLineEdit* m_impuesto = nullptr;
    QLineEdit* m_porcentaje = nullptr;
    QLineEdit* m_proveedor = nullptr;
    QLineEdit* m_nif_proveedor = nullptr;
    QLineEdit* m_domicilio_proveedor = nullptr;
    QLineEdit* m_codigo_postal_proveedor = nullptr;
    QLineEdit* m_poblacion_proveedor = nullptr;
    QLabel* m_falta;
};

} // namespace atipicos::app
