#pragma once

#include "engines/sql/Transacciones.hpp"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The rules of two sides over a session that only writes down what it is asked for.
namespace atipicos::sql {

inline constexpr auto gestion = Lado::gestion;
inline constexpr auto contabilidad = Lado::contabilidad;

/// Writes down what the session is asked for, and fails where it is told to.
class FisicaDePrueba final : public TransaccionFisica {
public:
    void empieza(Donde donde) override { hace("empieza", donde); }
    void confirma(Donde donde) override { hace("confirma", donde); }
    void deshace(Donde donde) override { hace("deshace", donde); }
    void pon_punto(Donde donde) override { hace("punto", donde); }
    void vuelve_al_punto(Donde donde) override { hace("vuelve", donde); }

    std::vector<std::string> pedido;
    std::string falla_en;
    std::function<void()> al_fallar;
    bool calla = false; ///< what fails raises nothing

private:
    void hace(const std::string& que, Donde donde)
    {
        pedido.push_back(que);
        if (que != falla_en)
            return;
        if (al_fallar)
            al_fallar();
        if (!calla)
            throw adodb::ErrorBaseDatos(adodb::Categoria::otra, "Prueba", "no queda sitio", que, donde);
    }
};

class ConTransacciones : public testing::Test {
protected:
    template <class Accion> std::string error(Accion accion)
    {
        try {
            accion();
            return {};
        } catch (const adodb::ErrorBaseDatos& error) {
            m_categoria = error.categoria();
            EXPECT_EQ(error.fuente(), error.descripcion() == "no queda sitio" ? "Prueba" : "Motor");
            return error.descripcion();
        }
    }
    std::string empieza(Lado lado)
    {
        return error([&] { par->empieza(lado, {}); });
    }
    std::string confirma(Lado lado)
    {
        return error([&] { par->confirma(lado, {}); });
    }
    std::string deshace(Lado lado)
    {
        return error([&] { par->deshace(lado, {}); });
    }
    std::string escribe(Lado lado)
    {
        return error([&] { par->admite(lado, "UPDATE t", true, {}); });
    }
    std::string pregunta(Lado lado)
    {
        return error([&] { par->admite(lado, "SELECT 1", false, {}); });
    }

    FisicaDePrueba fisica;
    std::shared_ptr<Transacciones> par = std::make_shared<Transacciones>(fisica, "Motor");
    adodb::Categoria m_categoria{};

    static constexpr auto ya_abierta = "Ya hay una transacción abierta en esta conexión.";
    static constexpr auto ninguna = "No hay ninguna transacción abierta en esta conexión.";
    static constexpr auto la_otra = "La otra conexión ha deshecho la transacción de las dos: sólo se puede "
                                    "deshacer.";
    static constexpr auto sin_empezar
        = "La otra conexión tiene una transacción abierta y esta no: antes de escribir, empiécela.";
};

} // namespace atipicos::sql
