#pragma once

#include "platform/adodb/Connection.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// What several spies have seen together, in order, and which of it is to fail.
struct Parte {
    std::vector<std::string>
        dichas; ///< "gestion BEGIN", "contabilidad EXEC INSERT …", "… OPEN …", "… UPDATE"
    std::size_t falla_en = 0; ///< 1-based: that operation fails without reaching the database; 0: none
    std::size_t falla_al_avanzar = 0; ///< 1-based: that step to a next row fails, and is 0 again; 0: none
    std::function<void()> al_llegar; ///< done before operation `falla_en`, which then goes to the database
    std::function<void(const std::string& dicha)> antes; ///< done before every operation
    bool conexion_perdida = false; ///< from the failure on, everything on that connection fails

    static constexpr const char* descripcion = "fallo provocado";
};

/// Stands before a real connection, writes down what passes, and makes the nth operation fail.
class ConexionEspia final : public adodb::Connection {
public:
    ConexionEspia(std::string nombre, std::shared_ptr<adodb::Connection> real, std::shared_ptr<Parte> parte);

    void Execute(
        const std::string& sql, std::int32_t* afectadas, adodb::CommandType tipo, Donde donde) override;
    void BeginTrans(Donde donde) override;
    void CommitTrans(Donde donde) override;
    void RollbackTrans(Donde donde) override;
    std::unique_ptr<adodb::Recordset> CreateRecordset() override;

    void avanza(Donde donde); ///< raises the failure of a step to the next row when it is due
    void pasa(const std::string& dicha, Donde donde); ///< notes it, and raises its failure when it is due

private:
    std::string m_nombre;
    std::shared_ptr<adodb::Connection> m_real;
    std::shared_ptr<Parte> m_parte;
    bool m_perdida = false;
    bool m_en_transaccion = false;
};

} // namespace atipicos::pruebas
