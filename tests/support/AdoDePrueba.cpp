#include "tests/support/AdoDePrueba.hpp"

#include "engines/ado/Conversion.hpp"

namespace atipicos::pruebas {

using automation::Anfitrion;
using automation::Argumentos;
using automation::Despacho;
using automation::Fallo;
using automation::Valor;

namespace {

    using Filas = std::shared_ptr<adodb::Recordset>;

    Valor sin_valor(const std::function<void()>& trabajo)
    {
        como_fallo(trabajo);
        return {};
    }

    Despacho campo_de(const Filas& filas, adodb::Field& campo)
    {
        auto* uno = &campo;
        return Anfitrion::crea({
            { "Name", [filas, uno](const Argumentos&) { return Valor(uno->Name()); } },
            { "Value",
                [filas, uno](
                    const Argumentos&) { return como_fallo([&] { return ado::valor_de(uno->Value()); }); },
                [filas, uno](const Argumentos& a) {
                    return sin_valor([&] { uno->Value(ado::variant_de(a.valor(0).get())); });
                } },
        });
    }

    Despacho campos_de(const Filas& filas)
    {
        return Anfitrion::crea({
            { "Count",
                [filas](const Argumentos&) { return Valor(static_cast<std::int32_t>(filas->Count())); } },
            { "Item",
                [filas](const Argumentos& a) {
                    return como_fallo([&] {
                        const Valor cual = a.valor(0);
                        auto& campo = cual.tipo() == automation::Valor("").tipo()
                            ? filas->Fields(std::string_view(cual.texto()))
                            : filas->Fields(static_cast<std::size_t>(cual.entero()));
                        return campo_de(filas, campo).valor();
                    });
                } },
        });
    }

    /// Those that the component may ask for; ADO has more, and refuses what is none of its own.
    adodb::CursorType cursor_de(std::int32_t codigo)
    {
        switch (codigo) {
        case 0:
            return adodb::CursorType::ForwardOnly;
        case 1:
            return adodb::CursorType::Keyset;
        case 3:
            return adodb::CursorType::Static;
        default:
            throw Fallo(3001, "ADODB.Recordset", "Argumentos incorrectos.");
        }
    }

    adodb::LockType bloqueo_de(std::int32_t codigo)
    {
        if (codigo != 1 && codigo != 2)
            throw Fallo(3001, "ADODB.Recordset", "Argumentos incorrectos.");
        return codigo == 2 ? adodb::LockType::Pessimistic : adodb::LockType::ReadOnly;
    }

    Despacho filas_de(const std::shared_ptr<adodb::Connection>& conexion)
    {
        const Filas filas(conexion->CreateRecordset().release(),
            [conexion](adodb::Recordset* suyas) { delete suyas; }); // the connection outlives it
        return Anfitrion::crea({
            { "Open",
                [filas](const Argumentos& a) {
                    return sin_valor([&] {
                        if (a.valor(1).objeto() == nullptr || a.valor(4).entero() != 1)
                            throw Fallo(3001, "ADODB.Recordset", "Argumentos incorrectos.");
                        filas->Open(a.valor(0).texto(), cursor_de(a.valor(2).entero()),
                            bloqueo_de(a.valor(3).entero()));
                    });
                } },
            { "EOF", [filas](const Argumentos&) { return Valor(filas->Eof()); } },
            { "MoveNext", [filas](const Argumentos&) { return sin_valor([&] { filas->MoveNext(); }); } },
            { "Fields", [filas](const Argumentos&) { return campos_de(filas).valor(); } },
            { "AddNew", [filas](const Argumentos&) { return sin_valor([&] { filas->AddNew(); }); } },
            { "Update", [filas](const Argumentos&) { return sin_valor([&] { filas->Update(); }); } },
            { "Close", [filas](const Argumentos&) { return sin_valor([&] { filas->Close(); }); } },
        });
    }

}

Despacho ado_de(std::shared_ptr<adodb::Connection> conexion)
{
    return Anfitrion::crea({
        { "Execute",
            [conexion](const Argumentos& a) {
                return sin_valor([&] {
                    if (a.valor(2).entero() != 1)
                        throw Fallo(3001, "ADODB.Connection", "Argumentos incorrectos.");
                    std::int32_t afectadas = 0;
                    conexion->Execute(a.valor(0).texto(), &afectadas);
                    a.escribe(1, afectadas);
                });
            } },
        { "BeginTrans",
            [conexion](const Argumentos&) { return sin_valor([&] { conexion->BeginTrans(); }); } },
        { "CommitTrans",
            [conexion](const Argumentos&) { return sin_valor([&] { conexion->CommitTrans(); }); } },
        { "RollbackTrans",
            [conexion](const Argumentos&) { return sin_valor([&] { conexion->RollbackTrans(); }); } },
        { "CreateRecordset", [conexion](const Argumentos&) { return filas_de(conexion).valor(); } },
    });
}

} // namespace atipicos::pruebas
