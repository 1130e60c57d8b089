#pragma once

#include "automation/Anfitrion.hpp"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace atipicos::pruebas {

/// A connection of a host that follows the rules of ADO to the letter and helps in nothing: its rows go
/// forward only and give each value once, values are of any kind, and it fails, is closed or is taken away
/// when a test wants it to.
class ConexionAjena {
public:
    struct Estado {
        std::vector<std::string> dichas; ///< what was asked for, in order
        std::vector<std::string> campos;
        std::vector<std::vector<automation::Valor>> filas;
        std::map<std::string, automation::Fallo> fallos; ///< by member
        automation::Valor afectadas = 1; ///< what `Execute` writes; nothing when empty
        std::function<automation::Valor(bool)> logico = [](bool valor) { return automation::Valor(valor); };
        std::function<void(const std::string& miembro)> durante; ///< while it answers
        bool cerrada = false;
        int abiertas = 0; ///< recordsets
    };
    std::shared_ptr<Estado> estado = std::make_shared<Estado>();

    /// What the component is lent.
    [[nodiscard]] automation::Despacho objeto() const
    {
        using automation::Argumentos;
        using automation::Valor;
        const auto suyo = estado;
        const auto simple = [suyo](const char* nombre) {
            return automation::Anfitrion::Miembro{ nombre, [suyo, nombre](const Argumentos&) {
                                                      empieza(*suyo, nombre, nombre);
                                                      return Valor();
                                                  } };
        };
        return automation::Anfitrion::crea({
            { "Execute",
                [suyo](const Argumentos& a) {
                    empieza(*suyo, "Execute",
                        "Execute " + a.valor(0).texto() + " (" + std::to_string(a.cuantos()) + " argumentos, "
                            + std::to_string(a.valor(2).entero()) + ")");
                    if (!suyo->afectadas.es_vacio())
                        a.escribe(1, suyo->afectadas);
                    return Valor();
                } },
            simple("BeginTrans"),
            simple("CommitTrans"),
            simple("RollbackTrans"),
            { "CreateRecordset", [suyo](const Argumentos&) { return filas_de(suyo).valor(); } },
        });
    }

private:
    struct Filas {
        std::shared_ptr<Estado> suyo;
        bool abierta = false;
        std::size_t fila = 0;
        std::vector<bool> leidos; ///< of the current row

        [[nodiscard]] bool fin() const { return fila >= suyo->filas.size(); }
    };

    static void falla_si(const Estado& estado, const std::string& miembro)
    {
        const auto fallo = estado.fallos.find(miembro);
        if (fallo != estado.fallos.end()) {
            const automation::Fallo& suyo = fallo->second;
            throw suyo;
        }
    }

    static void empieza(Estado& estado, const std::string& miembro, const std::string& dicha)
    {
        estado.dichas.push_back(dicha);
        if (estado.durante)
            estado.durante(miembro);
        falla_si(estado, miembro);
        if (estado.cerrada)
            throw automation::Fallo(
                3704, "ADODB.Connection", "La operación no está permitida si el objeto está cerrado.");
    }

    static automation::Valor valor(Filas& filas, std::size_t columna)
    {
        falla_si(*filas.suyo, "Value");
        if (!filas.abierta || filas.fin())
            throw automation::Fallo(3021, "ADODB.Field", "El valor de BOF o EOF es True.");
        if (filas.leidos.at(columna))
            return {}; // as drivers answer who reads a long text twice
        filas.leidos.at(columna) = true;
        return filas.suyo->filas[filas.fila].at(columna);
    }

    static automation::Despacho campo(const std::shared_ptr<Filas>& filas, std::size_t columna)
    {
        using automation::Argumentos;
        return automation::Anfitrion::crea({
            { "Name",
                [filas, columna](
                    const Argumentos&) { return automation::Valor(filas->suyo->campos.at(columna)); } },
            { "Value", [filas, columna](const Argumentos&) { return valor(*filas, columna); },
                [filas, columna](const Argumentos& a) {
                    filas->suyo->dichas.push_back("Value " + filas->suyo->campos.at(columna) + " tipo "
                        + std::to_string(a.valor(0).tipo()));
                    return automation::Valor();
                } },
        });
    }

    static automation::Despacho filas_de(const std::shared_ptr<Estado>& suyo)
    {
        using automation::Argumentos;
        using automation::Valor;
        const auto filas = std::make_shared<Filas>(Filas{ suyo, false, 0, {} });
        const auto edita = [filas](const char* nombre) {
            return automation::Anfitrion::Miembro{ nombre, [filas, nombre](const Argumentos&) {
                                                      empieza(*filas->suyo, nombre, nombre);
                                                      return Valor();
                                                  } };
        };
        return automation::Anfitrion::crea({
            { "Open",
                [filas](const Argumentos& a) {
                    empieza(*filas->suyo, "Open",
                        "Open " + a.valor(0).texto() + " cursor " + std::to_string(a.valor(2).entero())
                            + " bloqueo " + std::to_string(a.valor(3).entero()) + " opción "
                            + std::to_string(a.valor(4).entero())
                            + (a.valor(1).objeto() != nullptr ? "" : " sin conexión"));
                    filas->abierta = true;
                    filas->leidos.assign(filas->suyo->campos.size(), false);
                    ++filas->suyo->abiertas;
                    return Valor();
                } },
            { "EOF",
                [filas](const Argumentos&) {
                    falla_si(*filas->suyo, "EOF");
                    return filas->suyo->logico(filas->fin());
                } },
            { "MoveNext",
                [filas](const Argumentos&) {
                    empieza(*filas->suyo, "MoveNext", "MoveNext");
                    if (filas->fin())
                        throw automation::Fallo(3021, "ADODB.Recordset", "El valor de BOF o EOF es True.");
                    ++filas->fila;
                    filas->leidos.assign(filas->suyo->campos.size(), false);
                    return Valor();
                } },
            { "Fields",
                [filas](const Argumentos&) {
                    return automation::Anfitrion::crea(
                        {
                            { "Count",
                                [filas](const Argumentos&) {
                                    return Valor(static_cast<double>(filas->suyo->campos.size()));
                                } },
                            { "Item",
                                [filas](const Argumentos& a) {
                                    return campo(filas, static_cast<std::size_t>(a.valor(0).entero()))
                                        .valor();
                                } },
                        })
                        .valor();
                } },
            edita("AddNew"),
            edita("Update"),
            { "Close",
                [filas](const Argumentos&) {
                    empieza(*filas->suyo, "Close", "Close");
                    filas->abierta = false;
                    --filas->suyo->abiertas;
                    return Valor();
                } },
        });
    }
};

/// A decimal of automation: `cifras` / 10^`escala`; `altas` are worth 2^64 each.
[[nodiscard]] inline automation::Valor valor_decimal(
    bool negativo, unsigned escala, std::uint64_t cifras, std::uint32_t altas = 0)
{
    automation::Valor valor;
    auto& crudo = valor.get();
    crudo.vt = automation::VT_DECIMAL;
    crudo.wReserved1 = static_cast<automation::WORD>(escala | (negativo ? 0x8000U : 0U));
    crudo.wReserved2 = static_cast<automation::WORD>(altas & 0xFFFFU);
    crudo.wReserved3 = static_cast<automation::WORD>(altas >> 16U);
    crudo.ullVal = cifras;
    return valor;
}

} // namespace atipicos::pruebas
