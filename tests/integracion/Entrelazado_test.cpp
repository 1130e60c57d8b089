// Two workstations do something at once, in every order of their steps: what they leave is what they would
// leave one after the other, or one of them is told an error and has changed nothing. Set
// ATIPICOS_PRUEBA_LARGA for finer steps.
#include "browser/EliminarAtipico.hpp"
#include "host/comprobacion/Verificacion.hpp"
#include "host/sql/Guiones.hpp"
#include "tests/integracion/Banco.hpp"
#include "tests/integracion/Volcado.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos {
namespace {

    using pruebas::Banco;
    using std::chrono::milliseconds;

    constexpr auto codigo_base = "AT260001";
    constexpr std::size_t pasos_de_sobra = 20;

    /// What a workstation does; true when it was done without an error being shown.
    struct Hacer {
        std::string nombre;
        void (*hace)(Banco&, const std::string& quien);
    };
    const Hacer hacer_guardar{ "save",
        [](Banco& banco, const std::string& quien) { banco.guarda({}, 1, quien); } };
    const Hacer hacer_modificar{ "modify",
        [](Banco& banco, const std::string& quien) { banco.guarda(codigo_base, 1, quien); } };
    const Hacer modificar_sin_asiento{ "modify without entry",
        [](Banco& banco, const std::string& quien) { banco.guarda(codigo_base, 5, quien); } };
    const Hacer hacer_eliminar{ "delete", [](Banco&, const std::string&) {
                                   static_cast<void>(EliminarAtipico({ 2026, 1, codigo_base }));
                               } };

    struct Pareja {
        std::string nombre;
        Hacer una;
        Hacer otra;
        std::int16_t almacen = 1; ///< of the charge that is there before; 0: none, and no counters either
    };
    void PrintTo(const Pareja& pareja, std::ostream* salida) { *salida << pareja.nombre; }

    /// Where a workstation waits for its next turn. `primera_escritura`: it is about to change its first
    /// rows.
    bool es_parada(const std::string& dicha, bool primera_escritura)
    {
        const auto empieza = [&](const char* con) { return dicha.starts_with(con); };
        const bool larga = std::getenv("ATIPICOS_PRUEBA_LARGA") != nullptr;
        return empieza("gestion OPEN SELECT * FROM Contador") || dicha == "gestion COMMIT"
            || (primera_escritura && (larga || empieza("gestion EXEC DELETE")))
            || (larga
                && (dicha == "gestion BEGIN" || dicha == "contabilidad COMMIT"
                    || empieza("contabilidad EXEC UPDATE Contador")
                    || empieza("contabilidad OPEN SELECT * FROM Contador")
                    || empieza("gestion EXEC DELETE")));
    }

    /// A workstation: a process of its own, which goes on when it is told to.
    class Puesto {
    public:
        enum class Estado { parado, acabado, fallido };

        Puesto(const bases::Lugar& lugar, const Hacer& tarea, const std::string& nombre)
        {
            int ida[2];
            int vuelta[2];
            if (pipe(ida) != 0 || pipe(vuelta) != 0)
                throw std::runtime_error("no pipe");
            m_hijo = fork();
            if (m_hijo == 0) {
                close(ida[1]);
                close(vuelta[0]);
                trabaja(lugar, tarea, nombre, ida[0], vuelta[1]);
            }
            close(ida[0]);
            close(vuelta[1]);
            m_ordenes = ida[1];
            m_avisos = vuelta[0];
        }
        Puesto(const Puesto&) = delete;
        Puesto& operator=(const Puesto&) = delete;
        ~Puesto()
        {
            close(m_ordenes);
            close(m_avisos);
            waitpid(m_hijo, nullptr, 0);
        }

        void empieza()
        {
            m_pasos = 0;
            m_en_marcha = false;
            m_estado = Estado::parado;
        }

        [[nodiscard]] bool vivo() const { return m_en_marcha || m_estado == Estado::parado; }
        [[nodiscard]] bool bien() const { return m_estado == Estado::acabado; } ///< no error was shown
        [[nodiscard]] int pasos() const { return m_pasos; } ///< how many it has taken

        /// One step, unless it still waits for the other one in the step before.
        void paso(milliseconds paciencia)
        {
            if (m_en_marcha && !atiende(paciencia))
                return;
            if (m_estado != Estado::parado)
                return;
            ++m_pasos;
            m_en_marcha = true;
            if (write(m_ordenes, "s", 1) != 1)
                throw std::runtime_error("the workstation is gone");
            atiende(paciencia);
        }

    private:
        bool atiende(milliseconds paciencia)
        {
            pollfd espera{ m_avisos, POLLIN, 0 };
            if (poll(&espera, 1, static_cast<int>(paciencia.count())) == 0)
                return false;
            char aviso = 0;
            if (read(m_avisos, &aviso, 1) != 1)
                throw std::runtime_error("the workstation died");
            m_en_marcha = false;
            m_estado = aviso == 'p' ? Estado::parado : aviso == 'b' ? Estado::acabado : Estado::fallido;
            return true;
        }

        [[noreturn]] static void trabaja(
            const bases::Lugar& lugar, const Hacer& tarea, const std::string& nombre, int ordenes, int avisos)
        {
            const auto espera = [&] {
                char orden = 0;
                if (read(ordenes, &orden, 1) != 1)
                    _exit(0);
            };
            const auto avisa = [&](char que) {
                if (write(avisos, &que, 1) != 1)
                    _exit(1);
            };
            try {
                Banco banco(lugar);
                bool escribe = false;
                banco.parte->antes = [&](const std::string& dicha) {
                    const bool primera = dicha.starts_with("gestion EXEC") && !std::exchange(escribe, true);
                    if (!es_parada(dicha, primera))
                        return;
                    avisa('p');
                    espera();
                };
                for (;;) {
                    espera();
                    escribe = false;
                    banco.avisos->dichos.clear();
                    tarea.hace(banco, nombre);
                    for (const auto& aviso : banco.avisos->dichos)
                        if (aviso.texto.empty())
                            _exit(1);
                    avisa(banco.avisos->dichos.empty() ? 'b' : 'f');
                }
            } catch (const std::exception& error) {
                std::cerr << error.what() << '\n';
            }
            _exit(1);
        }

        pid_t m_hijo = -1;
        int m_ordenes = -1;
        int m_avisos = -1;
        bool m_en_marcha = false;
        Estado m_estado = Estado::acabado;
        int m_pasos = 0;
    };

    using Volcado = std::vector<std::string>;

    /// Two workstations and a company that is as at the beginning before each round.
    class Ronda {
    public:
        Ronda(const pruebas::Sede& sede, const Pareja& pareja)
            : m_muestra(sede.muestra())
            , m_almacen(pareja.almacen)
            , una(m_muestra->lugar(), pareja.una, "una")
            , otra(m_muestra->lugar(), pareja.otra, "otra")
            , m_banco(m_muestra->lugar()) // after the processes have gone their own way
        {
        }

        /// Lets them work, each "1" a step of one and each "2" a step of the other, until both are done.
        Volcado juega(const std::string& orden)
        {
            prepara();
            if (orden.find('1') != std::string::npos)
                una.empieza();
            if (orden.find('2') != std::string::npos)
                otra.empieza();
            for (const char turno : orden)
                (turno == '1' ? una : otra).paso(poca_paciencia);
            while (una.vivo() || otra.vivo()) {
                una.paso(poca_paciencia);
                otra.paso(poca_paciencia);
            }
            return vuelca();
        }

        Volcado vuelca() const
        {
            auto todo = pruebas::vuelca(*m_banco.bases().orvalin, guiones::orvalin());
            const auto contable = pruebas::vuelca(*m_banco.bases().bexmor, guiones::bexmor());
            todo.insert(todo.end(), contable.begin(), contable.end());
            return todo;
        }

        [[nodiscard]] std::vector<std::string> diferencias() const
        {
            return app::verifica(m_banco.bases()).diferencias;
        }

        void prepara()
        {
            const auto& bases = m_banco.bases();
            for (const auto* tabla : { "Proveedores_Cargos_Atipicos_Lineas", "Proveedores_Cargos_Atipicos",
                     "Contador_Proveedores_Cargos_Atipicos" })
                bases.orvalin->Execute(std::string("DELETE FROM ") + tabla);
            for (const auto* tabla :
                { "Previsiones", "Registro_Impuestos", "Apuntes", "Asientos", "Contador_Asientos" })
                bases.bexmor->Execute(std::string("DELETE FROM ") + tabla);
            if (m_almacen > 0)
                m_banco.guarda({}, m_almacen, "base");
        }

    private:
        static constexpr milliseconds poca_paciencia{ 10 }; // then it is taken to wait for the other one

        std::unique_ptr<pruebas::Muestra> m_muestra;
        std::int16_t m_almacen;

    public:
        Puesto una;
        Puesto otra;

    private:
        Banco m_banco;
    };

    struct Entrelazado : testing::TestWithParam<std::tuple<pruebas::Sede, Pareja>> { };

    TEST_P(Entrelazado, every_order_ends_as_one_after_the_other_or_with_an_error_and_nothing_half_done)
    {
        const auto& [sede, pareja] = GetParam();
        if (!sede.falta.empty())
            GTEST_SKIP() << sede.falta;
        Ronda ronda(sede, pareja);
        const std::string muchos(20, '1');
        const std::string muchas(20, '2');
        const std::string a_una(pasos_de_sobra, '1');
        const std::string a_otra(pasos_de_sobra, '2');
        const auto solo_una = ronda.juega(a_una);
        const auto solo_otra = ronda.juega(a_otra);
        const auto una_y_otra = ronda.juega(a_una + a_otra);
        const auto pasos_de_una = static_cast<std::size_t>(ronda.una.pasos());
        const auto otra_y_una = ronda.juega(a_otra + a_una);
        const auto pasos_de_otra = static_cast<std::size_t>(ronda.otra.pasos());
        const auto diferencias = ronda.diferencias(); // none, unless a task leaves one by itself

        int ordenes = 0;
        int con_error = 0;
        std::string orden = std::string(pasos_de_una, '1') + std::string(pasos_de_otra, '2');
        do {
            SCOPED_TRACE(orden);
            const auto hecho = ronda.juega(orden);
            ++ordenes;
            if (ronda.una.bien() && ronda.otra.bien()) {
                EXPECT_THAT(hecho, testing::AnyOf(una_y_otra, otra_y_una));
            } else {
                ++con_error;
                EXPECT_THAT(hecho, testing::AnyOf(una_y_otra, otra_y_una, solo_una, solo_otra));
            }
            EXPECT_EQ(ronda.diferencias(), diferencias);
        } while (!HasFailure() && std::next_permutation(orden.begin(), orden.end()));
        std::cout << ordenes << " orders of " << pasos_de_una << " and " << pasos_de_otra << " steps, "
                  << con_error << " with an error shown\n";
    }

    std::vector<Pareja> parejas()
    {
        return { { "save_save", hacer_guardar, hacer_guardar },
            { "save_save_without_counter", hacer_guardar, hacer_guardar, 0 },
            { "save_delete", hacer_guardar, hacer_eliminar },
            { "modify_delete", hacer_modificar, hacer_eliminar },
            { "modify_modify", hacer_modificar, hacer_modificar },
            { "modify_modify_without_entry", modificar_sin_asiento, modificar_sin_asiento, 5 } };
    }

    INSTANTIATE_TEST_SUITE_P(sedes, Entrelazado,
        testing::Combine(
            testing::Values(pruebas::en_carpeta(), pruebas::en_postgresql()), testing::ValuesIn(parejas())),
        [](const auto& caso) {
            return std::get<0>(caso.param).nombre + "_" + std::get<1>(caso.param).nombre;
        });

}
}
