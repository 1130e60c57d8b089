#pragma once

#include "context/modComun.hpp"
#include "tests/support/BibliotecaDePrueba.hpp"
#include "tests/support/ConexionDePrueba.hpp"
#include "tests/support/MsgBoxDePrueba.hpp"

#include <memory>
#include <string>

namespace atipicos::pruebas {

class RelojDePrueba final : public Reloj {
public:
    Date valor;
    Date ahora() const override { return valor; }
};

/// A day of the calendar, and a day with a time. One written otherwise raises an error that names the line.
[[nodiscard]] Date dia(const char* texto, Donde donde = Donde::aqui()); ///< `dd/mm/yyyy`
[[nodiscard]] Date dia_y_hora(
    const char* texto, int horas, int minutos, int segundos, Donde donde = Donde::aqui());

[[nodiscard]] Currency moneda(const char* texto, Donde donde = Donde::aqui()); ///< "-1234.5"

/// The line of the project file on which an error box says the error happened, without blanks around;
/// empty when the text does not begin with "[line] ".
[[nodiscard]] std::string linea_nombrada(const std::string& texto_aviso, const std::string& fichero);

/// The component's context with fakes in every place; taken down again at the end of the test.
/// User 12, tax type 1 at 7 %, forecasts on, today 21/11/2026 at 9:05:03.
struct Contexto {
    std::shared_ptr<EmpresaDePrueba> empresa = std::make_shared<EmpresaDePrueba>();
    std::shared_ptr<ConexionDePrueba> gestion = std::make_shared<ConexionDePrueba>();
    std::shared_ptr<ConexionDePrueba> contabilidad = std::make_shared<ConexionDePrueba>();
    std::shared_ptr<BibliotecaDePrueba> biblioteca = std::make_shared<BibliotecaDePrueba>();
    std::shared_ptr<MsgBoxDePrueba> avisos = std::make_shared<MsgBoxDePrueba>();
    std::shared_ptr<RelojDePrueba> reloj = std::make_shared<RelojDePrueba>();

    Contexto();
    Contexto(const Contexto&) = delete;
    Contexto& operator=(const Contexto&) = delete;
    ~Contexto();
};

/// Leaves the component without any reference, as it is when it has just been loaded.
void vacia_contexto();

} // namespace atipicos::pruebas
