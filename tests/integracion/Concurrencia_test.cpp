// Eight processes save at once, and some of them are killed in the middle of a save. Set
// ATIPICOS_PRUEBA_LARGA to have each of them save 250 charges instead of a few.
#include "host/comprobacion/Verificacion.hpp"
#include "tests/integracion/Banco.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos {
namespace {

    using pruebas::Banco;

    constexpr int puestos = 8;
    constexpr auto titulo_de_guardar = "frmCompras_Atipicos:cmdAceptar_Click";

    int cargos_por_puesto() { return std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr ? 250 : 12; }

    struct Concurrencia : testing::TestWithParam<pruebas::Sede> {
        std::unique_ptr<pruebas::Muestra> muestra;

        void SetUp() override
        {
            if (const auto& falta = GetParam().falta; !falta.empty())
                GTEST_SKIP() << falta;
        }

        /// How many operations a save has before it commits the charge; the first of a year has more. A
        /// process killed later than that has saved it; between the two commits it leaves the one difference
        /// that `verificar` names.
        std::size_t operaciones_hasta_confirmar() const
        {
            Banco banco(GetParam());
            banco.guarda();
            banco.parte->dichas.clear();
            banco.guarda();
            const auto& dichas = banco.parte->dichas;
            return static_cast<std::size_t>(
                std::find(dichas.begin(), dichas.end(), "gestion COMMIT") - dichas.begin());
        }
    };

    /// What one process has to do: save charges, and perhaps be killed in the save of one more.
    struct Tarea {
        int cargos = 0;
        std::size_t muere_en = 0; ///< the operation at which it is killed; 0: it ends well
        unsigned semilla = 0;
    };

    /// Saves a charge; a wait for other users that took too long is shown to the person, who tries again.
    bool guarda_aunque_espere(Banco& banco, std::int16_t almacen)
    {
        while (banco.guarda({}, almacen).estado != ResultadoGuardado::Estado::Guardado) {
            const auto& aviso = banco.avisos->dichos.back();
            if (aviso.titulo != titulo_de_guardar
                || aviso.texto.find("bloqueada por otro usuario") == std::string::npos) {
                std::cerr << aviso.titulo << ": " << aviso.texto << '\n';
                return false;
            }
            banco.avisos->dichos.clear();
        }
        return banco.avisos->dichos.empty();
    }

    [[noreturn]] void trabaja(const bases::Lugar& lugar, const Tarea& tarea)
    {
        bool bien = true;
        try {
            std::minstd_rand azar(tarea.semilla);
            Banco banco(lugar);
            for (int i = 0; i < tarea.cargos; ++i)
                bien = guarda_aunque_espere(banco, static_cast<std::int16_t>(1 + azar() % 4)) && bien;
            if (tarea.muere_en > 0) {
                banco.parte->dichas.clear();
                banco.parte->falla_en = tarea.muere_en;
                banco.parte->al_llegar = [] { static_cast<void>(std::raise(SIGKILL)); };
                banco.guarda();
                bien = false; // it should not be alive
            }
        } catch (const std::exception& error) {
            std::cerr << error.what() << '\n';
            bien = false;
        }
        _exit(bien ? 0 : 1);
    }

    /// Does the charges of one workstation, in as many processes as are killed on the way and one more.
    [[noreturn]] void atiende_puesto(const bases::Lugar& lugar, unsigned semilla, std::size_t operaciones)
    {
        std::minstd_rand azar(semilla);
        for (int quedan = cargos_por_puesto(); quedan > 0;) {
            Tarea tarea{ std::min<int>(quedan, static_cast<int>(azar() % 10)), 1 + azar() % operaciones,
                static_cast<unsigned>(azar()) };
            if (tarea.cargos == quedan)
                tarea.muere_en = 0;
            const pid_t hijo = fork();
            if (hijo == 0)
                trabaja(lugar, tarea);
            int estado = 0;
            waitpid(hijo, &estado, 0);
            const bool esperado = tarea.muere_en > 0 ? WIFSIGNALED(estado) && WTERMSIG(estado) == SIGKILL
                                                     : WIFEXITED(estado) && WEXITSTATUS(estado) == 0;
            if (!esperado)
                _exit(1);
            quedan -= tarea.cargos;
        }
        _exit(0);
    }

    std::vector<std::int32_t> numeros(adodb::Connection& conexion, const std::string& sql)
    {
        std::vector<std::int32_t> todos;
        const auto rs = conexion.CreateRecordset();
        rs->Open(sql, adodb::CursorType::ForwardOnly, adodb::LockType::ReadOnly);
        for (; !rs->Eof(); rs->MoveNext()) {
            auto texto = CStr(rs->Fields(std::size_t{ 0 }).Value());
            todos.push_back(std::stoi(texto.starts_with("AT") ? texto.substr(2) : texto));
        }
        std::sort(todos.begin(), todos.end());
        return todos;
    }

    /// Whether they are `primero` and those that follow it, each once.
    void expect_seguidos(
        const std::vector<std::int32_t>& todos, std::int32_t primero, const std::string& cuales)
    {
        for (std::size_t i = 0; i < todos.size(); ++i)
            ASSERT_EQ(todos[i], primero + static_cast<std::int32_t>(i)) << cuales;
    }

    TEST_P(Concurrencia, codes_and_entries_are_unique_and_consecutive_and_nothing_is_half_written)
    {
        const auto operaciones = operaciones_hasta_confirmar();
        muestra = GetParam().muestra(); // now: on some servers there is place for one at a time
        std::vector<pid_t> hijos;
        for (unsigned puesto = 0; puesto < puestos; ++puesto) {
            const pid_t hijo = fork();
            if (hijo == 0)
                atiende_puesto(muestra->lugar(), 1 + puesto, operaciones);
            hijos.push_back(hijo);
        }
        for (const auto hijo : hijos) {
            int estado = 0;
            waitpid(hijo, &estado, 0);
            EXPECT_EQ(estado, 0) << "a workstation showed an error that is no wait for others";
        }

        const auto bases = bases::abre_bases(muestra->lugar());
        std::size_t cargos = 0;
        for (int almacen = 1; almacen <= 4; ++almacen) {
            const auto codigos = numeros(*bases.orvalin,
                "SELECT Codigo FROM Proveedores_Cargos_Atipicos WHERE Cod_Almacen ="
                    + std::to_string(almacen));
            expect_seguidos(codigos, 260'001, "codes of warehouse " + std::to_string(almacen));
            cargos += codigos.size();
        }
        EXPECT_EQ(cargos, static_cast<std::size_t>(puestos * cargos_por_puesto()));
        for (int empresa = 1; empresa <= 2; ++empresa)
            expect_seguidos(numeros(*bases.bexmor,
                                "SELECT Numero FROM Asientos WHERE Cod_Empresa =" + std::to_string(empresa)),
                1, "entries of company " + std::to_string(empresa));
        const auto verificacion = app::verifica(bases);
        EXPECT_THAT(verificacion.diferencias, testing::IsEmpty());
        EXPECT_EQ(verificacion.asientos, cargos);
    }

    INSTANTIATE_TEST_SUITE_P(sedes, Concurrencia, testing::ValuesIn(pruebas::sedes()),
        [](const auto& caso) { return caso.param.nombre; });

}
}
