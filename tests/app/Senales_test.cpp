// Signals that end the program: what it was at is ended or undone, the databases are closed, and the status
// says which signal it was.
#include "tests/app/Programa.hpp"

#include "engines/sqlite/Connection.hpp"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <thread>
#include <unistd.h>

namespace atipicos {
namespace {

    using testing::ElementsAre;
    using testing::EndsWith;
    using testing::HasSubstr;

    /// The program in the folder of `programa`, still running.
    class EnMarcha {
    public:
        EnMarcha(const pruebas::Programa& programa, std::vector<std::string> palabras)
        {
            palabras.insert(palabras.begin(), ATIPICOS_PROGRAMA);
            palabras.push_back("--datos=" + (programa.carpeta / "datos").string());
            std::vector<char*> argv;
            for (auto& palabra : palabras)
                argv.push_back(palabra.data());
            argv.push_back(nullptr);
            posix_spawn_file_actions_t acciones;
            posix_spawn_file_actions_init(&acciones);
            for (const auto& [descriptor, fichero] :
                { std::pair{ STDOUT_FILENO, "salida.txt" }, { STDERR_FILENO, "errores.txt" } })
                posix_spawn_file_actions_addopen(&acciones, descriptor, (programa.carpeta / fichero).c_str(),
                    O_WRONLY | O_CREAT | O_TRUNC, 0600);
            posix_spawnattr_t atributos;
            posix_spawnattr_init(&atributos);
            sigset_t todas;
            sigfillset(&todas);
            posix_spawnattr_setsigdefault(&atributos, &todas); // whatever this test was started to ignore
            posix_spawnattr_setflags(&atributos, POSIX_SPAWN_SETSIGDEF);
            if (posix_spawn(&m_proceso, ATIPICOS_PROGRAMA, &acciones, &atributos, argv.data(), environ) != 0)
                ADD_FAILURE() << "the program cannot be started";
            posix_spawnattr_destroy(&atributos);
            posix_spawn_file_actions_destroy(&acciones);
        }

        void manda(int senal) const { kill(m_proceso, senal); }

        /// Waits until the program has its own way with that signal, or has ended.
        void espera_a_que_atienda(int senal) const
        {
            while (sigue() && (std::stoull(dice("SigCgt:"), nullptr, 16) & 1ULL << (senal - 1)) == 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }

        /// Waits until the program does nothing but wait, or has ended.
        void espera_a_que_duerma() const
        {
            for (int seguidas = 0; sigue() && seguidas < 10;) {
                seguidas = dice("State:").starts_with('S') ? seguidas + 1 : 0;
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        }

        [[nodiscard]] bool sigue() const
        {
            siginfo_t que{};
            return waitid(P_PID, static_cast<id_t>(m_proceso), &que, WEXITED | WNOHANG | WNOWAIT) == 0
                && que.si_pid == 0;
        }

        [[nodiscard]] int espera() const ///< what `waitpid` says
        {
            int estado = 0;
            waitpid(m_proceso, &estado, 0);
            return estado;
        }

    private:
        /// What the system says of the program on the line that begins so.
        [[nodiscard]] std::string dice(const std::string& comienzo) const
        {
            std::ifstream estado("/proc/" + std::to_string(m_proceso) + "/status");
            for (std::string linea; std::getline(estado, linea);)
                if (linea.starts_with(comienzo))
                    return linea.substr(comienzo.size() + 1);
            return "0";
        }

        pid_t m_proceso = -1;
    };

    struct Senales : testing::Test {
        pruebas::Programa programa;
        std::string fichero = (programa.carpeta / "r.csv").string();
        Senales() { EXPECT_EQ(programa("crear").estado, 0); }

        void escribe_reclamaciones(int cuantas, const std::string& observaciones = {}) const
        {
            std::string texto = pruebas::cabecera;
            for (int i = 0; i < cuantas; ++i)
                texto += "R" + std::to_string(i) + ";1;101;21/11/2026;" + observaciones + ";;;Agua;1;10;\n";
            programa.escribe("r.csv", texto);
        }

        [[nodiscard]] std::shared_ptr<sqlite::Connection> base() const
        {
            return sqlite::Connection::Abrir({ .fichero = programa.carpeta / "datos/empresa.db" });
        }

        [[nodiscard]] int registradas() const
        {
            const auto conexion = base();
            auto rs = conexion->CreateRecordset();
            rs->Open(
                "SELECT COUNT(*) FROM Importaciones", adodb::CursorType::Static, adodb::LockType::ReadOnly);
            return CLng(rs->Fields(std::size_t{ 0 }).Value());
        }

        [[nodiscard]] std::vector<std::string> ficheros() const
        {
            std::vector<std::string> nombres;
            for (const auto& uno : std::filesystem::directory_iterator(programa.carpeta / "datos"))
                nombres.push_back(uno.path().filename());
            return nombres;
        }
    };

    TEST_F(Senales, registrar_ends_with_whole_claims_and_tells_how_many)
    {
        constexpr int todas = 600;
        escribe_reclamaciones(todas);
        int antes = 0;
        for (const int senal : { SIGINT, SIGTERM, SIGHUP }) {
            const EnMarcha registrar(programa, { "registrar", fichero });
            while (registrar.sigue() && registradas() <= antes + 1) { }
            registrar.manda(senal);
            const int estado = registrar.espera();
            ASSERT_TRUE(WIFEXITED(estado)) << WTERMSIG(estado);
            EXPECT_EQ(WEXITSTATUS(estado), 128 + senal);
            EXPECT_THAT(ficheros(), ElementsAre("empresa.db"));
            const int ahora = registradas();
            ASSERT_LT(ahora, todas) << "it was through before it heard the signal";
            EXPECT_THAT(programa.lee("salida.txt"),
                EndsWith("\n" + std::to_string(ahora - antes) + " registradas, " + std::to_string(antes)
                    + " ya lo estaban, 0 rechazadas.\n"));
            EXPECT_EQ(programa.lee("errores.txt"),
                "atipicos: Quedan " + std::to_string(todas - ahora)
                    + " por registrar: registre el mismo fichero otra vez.\n");
            const auto verificado = programa("verificar");
            EXPECT_THAT(verificado.salida, EndsWith(": sin diferencias.\n"));
            EXPECT_THAT(verificado.salida, HasSubstr("Verificación: " + std::to_string(ahora) + " cargos"));
            antes = ahora;
        }
        const auto acabada = programa("registrar r.csv");
        EXPECT_EQ(acabada.estado, 0);
        EXPECT_EQ(registradas(), todas);
    }

    TEST_F(Senales, the_ones_that_only_read_stop_where_they_are)
    {
        escribe_reclamaciones(300, std::string(1000, 'x'));
        ASSERT_EQ(programa("registrar r.csv").estado, 0);
        ASSERT_EQ(mkfifo((programa.carpeta / "salida.csv").c_str(), 0600), 0);
        // It waits to be read from, and then has more to write than a pipe holds.
        const EnMarcha listar(programa,
            { "listar", "--desde=01/01/2026", "--hasta=31/12/2026", "--formato=csv",
                "--salida=" + (programa.carpeta / "salida.csv").string() });
        const int lectura = open((programa.carpeta / "salida.csv").c_str(), O_RDONLY);
        char uno = 0;
        EXPECT_EQ(read(lectura, &uno, 1), 1);
        listar.manda(SIGTERM);
        char resto[4096];
        while (read(lectura, resto, sizeof resto) > 0) { }
        close(lectura);
        const int estado = listar.espera();
        ASSERT_TRUE(WIFEXITED(estado));
        EXPECT_EQ(WEXITSTATUS(estado), 128 + SIGTERM);
        EXPECT_EQ(programa.lee("errores.txt"), "atipicos: Interrumpido.\n");
        EXPECT_THAT(ficheros(), ElementsAre("empresa.db"));
    }

    TEST_F(Senales, the_main_window_is_closed_and_the_databases_with_it)
    {
        if (!ATIPICOS_CON_VENTANAS)
            GTEST_SKIP() << "built without windows";
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        const EnMarcha ventana(programa, { "--empresa=1", "--usuario=1" });
        const auto registro = programa.carpeta / "datos/empresa.db-shm"; // there while the database is open
        while (ventana.sigue() && !std::filesystem::exists(registro)) { }
        ventana.espera_a_que_atienda(SIGTERM);
        ventana.manda(SIGTERM);
        const int estado = ventana.espera();
        ASSERT_TRUE(WIFEXITED(estado)) << WTERMSIG(estado);
        EXPECT_EQ(WEXITSTATUS(estado), 128 + SIGTERM);
        EXPECT_THAT(ficheros(), ElementsAre("empresa.db"));
    }

    TEST_F(Senales, a_second_one_ends_the_wait_for_another_user)
    {
        escribe_reclamaciones(5);
        const auto otro = base();
        otro->BeginTrans();
        const EnMarcha registrar(programa, { "registrar", fichero });
        constexpr std::chrono::milliseconds un_rato(500); // what comes at once counts as one
        registrar.espera_a_que_duerma();
        registrar.manda(SIGINT);
        std::this_thread::sleep_for(un_rato);
        EXPECT_TRUE(registrar.sigue()) << "the first one lets the claim at hand have its turn";
        for (; registrar.sigue(); std::this_thread::sleep_for(un_rato))
            registrar.manda(SIGINT);
        const int estado = registrar.espera();
        EXPECT_TRUE(WIFSIGNALED(estado));
        EXPECT_EQ(WTERMSIG(estado), SIGINT);
        otro->RollbackTrans();
        EXPECT_EQ(programa("registrar r.csv").estado, 0);
        EXPECT_EQ(registradas(), 5);
    }

}
}
