#include "host/sesion/BorradoresEnCarpeta.hpp"

#include "host/sesion/CerrojoDeBorrador.hpp"
#include "tests/app/BorradorDePrueba.hpp"
#include "tests/support/CarpetaTemporal.hpp"
#include "tests/support/DiscoLleno.hpp"
#include "tests/support/DiscoPequeno.hpp"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos {
namespace {

    using namespace app;
    using namespace pruebas;
    namespace fs = std::filesystem;
    using testing::HasSubstr;
    using testing::IsEmpty;

    class BorradoresEnCarpeta_ : public testing::Test {
    protected:
        Contexto contexto;
        CarpetaTemporal temporal;
        DuenoDeBorradores dueno{ "la muestra", 3, 7 };
        BorradoresEnCarpeta borradores{ temporal / "estado/atipicos/3-7", dueno };

        static Borrador con_proveedor(std::int32_t proveedor)
        {
            auto borrador = borrador_distinto();
            borrador.Proveedor = proveedor;
            return borrador;
        }

        /// What each of them says of its supplier, in the order of the offer; -1 where it cannot be read.
        [[nodiscard]] std::vector<std::int32_t> ofrecidos() const
        {
            std::vector<std::int32_t> hallados;
            for (const auto& uno : borradores.ofrecidos())
                hallados.push_back(uno.leido ? uno.leido->borrador.Proveedor : -1);
            return hallados;
        }

        [[nodiscard]] std::vector<std::string> ficheros() const
        {
            std::vector<std::string> nombres;
            std::error_code fallo;
            for (fs::directory_iterator uno(borradores.carpeta(), fallo), fin; !fallo && uno != fin; ++uno)
                nombres.push_back(uno->path().extension().string());
            std::sort(nombres.begin(), nombres.end());
            return nombres;
        }

        static std::string error_al_guardar(BorradorAbierto& abierto, const Borrador& borrador)
        {
            try {
                abierto.Guardar(borrador);
                return {};
            } catch (const Error& error) {
                return error.descripcion();
            }
        }

        /// In a process of its own, which is killed with the draft in hand.
        void guarda_y_muere(std::int32_t proveedor)
        {
            const pid_t hijo = fork();
            if (hijo == 0) {
                const auto abierto = borradores.Abrir();
                abierto->Guardar(con_proveedor(proveedor));
                raise(SIGKILL);
            }
            int estado = 0;
            waitpid(hijo, &estado, 0);
            ASSERT_TRUE(WIFSIGNALED(estado));
        }
    };

    mode_t permisos(const fs::path& ruta)
    {
        struct stat estado { };
        stat(ruta.c_str(), &estado);
        return estado.st_mode & 0777U;
    }

    TEST_F(BorradoresEnCarpeta_,
        an_editor_that_has_closed_leaves_its_draft_and_one_that_is_open_does_not_offer_it)
    {
        auto abierto = borradores.Abrir();
        EXPECT_THAT(ficheros(), IsEmpty()); // nothing to keep yet
        abierto->Guardar(con_proveedor(104));
        abierto->Guardar(con_proveedor(105)); // in place of the first
        EXPECT_THAT(ofrecidos(), IsEmpty());
        abierto.reset();
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(105));
        EXPECT_THAT(ficheros(), testing::ElementsAre(".json"));
        const auto uno = borradores.ofrecidos().front();
        EXPECT_TRUE(uno.leido->borrador == con_proveedor(105));
        EXPECT_EQ(uno.leido->momento, contexto.reloj->valor);
    }

    TEST_F(BorradoresEnCarpeta_, what_was_saved_or_cancelled_leaves_nothing_and_the_editor_goes_on)
    {
        const auto abierto = borradores.Abrir();
        abierto->Quitar();
        abierto->Guardar(con_proveedor(104));
        abierto->Quitar();
        EXPECT_THAT(ficheros(), IsEmpty());
        abierto->Guardar(con_proveedor(107));
        EXPECT_EQ(ficheros().size(), 2U);
    }

    TEST_F(BorradoresEnCarpeta_, a_killed_process_leaves_its_draft_and_one_that_runs_keeps_it)
    {
        guarda_y_muere(101);
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(101));

        int aviso[2]{};
        int fin[2]{};
        ASSERT_EQ(pipe(aviso) + pipe(fin), 0);
        const pid_t hijo = fork();
        if (hijo == 0) {
            const auto abierto = borradores.Abrir();
            abierto->Guardar(con_proveedor(102));
            char byte = 1;
            const bool dicho = write(aviso[1], &byte, 1) == 1 && read(fin[0], &byte, 1) == 1;
            _exit(dicho ? 0 : 1);
        }
        char byte = 0;
        ASSERT_EQ(read(aviso[0], &byte, 1), 1);
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(101)); // the other editor is open in another process
        kill(hijo, SIGKILL);
        waitpid(hijo, nullptr, 0);
        EXPECT_THAT(ofrecidos(), testing::UnorderedElementsAre(101, 102));
        for (const int descriptor : { aviso[0], aviso[1], fin[0], fin[1] })
            close(descriptor);
    }

    TEST_F(BorradoresEnCarpeta_, two_editors_keep_two_and_the_latest_is_offered_first)
    {
        auto uno = borradores.Abrir();
        auto otro = borradores.Abrir();
        uno->Guardar(con_proveedor(101));
        contexto.reloj->valor = dia_y_hora("21/11/2026", 9, 5, 4);
        otro->Guardar(con_proveedor(102));
        std::ofstream(borradores.carpeta() / "a.json") << "no";
        uno.reset();
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(101, -1));
        otro.reset();
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(102, 101, -1));
        EXPECT_EQ(borradores.ofrecidos().back().motivo, "está dañado");
    }

    TEST_F(BorradoresEnCarpeta_, only_their_owner_can_read_them)
    {
        const auto abierto = borradores.Abrir();
        const mode_t antes = umask(0);
        abierto->Guardar(con_proveedor(104));
        umask(antes);
        for (const auto& uno : fs::directory_iterator(borradores.carpeta()))
            EXPECT_EQ(permisos(uno.path()), 0600U) << uno.path();
        EXPECT_EQ(permisos(borradores.carpeta()), 0700U);
        EXPECT_EQ(permisos(temporal / "estado"), 0700U);
    }

    TEST_F(BorradoresEnCarpeta_, on_a_full_disk_the_draft_before_stays_whole_and_the_reason_is_told)
    {
        auto abierto = borradores.Abrir();
        abierto->Guardar(con_proveedor(104));
        auto grande = con_proveedor(105);
        grande.Observaciones.assign(20'000, 'x');
        {
            const DiscoLleno lleno(4'000);
            EXPECT_THAT(
                error_al_guardar(*abierto, grande), HasSubstr(".json»: el fichero es demasiado grande."));
        }
        EXPECT_THAT(ficheros(), testing::ElementsAre(".cerrojo", ".json"));
        abierto.reset();
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(104));
    }

    TEST_F(BorradoresEnCarpeta_, where_nothing_can_be_written_the_reason_is_told)
    {
        std::ofstream(temporal / "fichero") << "x";
        BorradoresEnCarpeta bajo_un_fichero(temporal / "fichero" / "3-7", dueno);
        EXPECT_THAT(error_al_guardar(*bajo_un_fichero.Abrir(), con_proveedor(1)),
            HasSubstr("una parte de su ruta no es una carpeta."));
        EXPECT_THAT(bajo_un_fichero.ofrecidos(), IsEmpty());

        const DiscoPequeno disco(temporal / "disco");
        if (!disco.montado())
            GTEST_SKIP() << "only root can mount a disk";
        BorradoresEnCarpeta en_disco(temporal / "disco" / "3-7", dueno);
        auto abierto = en_disco.Abrir();
        abierto->Guardar(con_proveedor(104));
        abierto.reset();
        std::ofstream(en_disco.carpeta() / "cargo-9-9.json.cerrojo") << ""; // which cannot be swept there
        ASSERT_TRUE(disco.protege());
        EXPECT_THAT(error_al_guardar(*en_disco.Abrir(), con_proveedor(105)),
            HasSubstr("el disco es de sólo lectura."));
        ASSERT_EQ(en_disco.ofrecidos().size(), 1U);
        EXPECT_EQ(en_disco.ofrecidos().front().leido->borrador.Proveedor, 104);
    }

    TEST_F(BorradoresEnCarpeta_, whoever_takes_one_has_it_alone)
    {
        guarda_y_muere(101);
        const auto fichero = borradores.ofrecidos().front().fichero;
        auto tomado = CerrojoDeBorrador::toma(fichero);
        ASSERT_TRUE(tomado);
        EXPECT_FALSE(CerrojoDeBorrador::toma(fichero));
        EXPECT_THAT(ofrecidos(), IsEmpty());
        tomado.reset();
        EXPECT_THAT(ofrecidos(), testing::ElementsAre(101));
        CerrojoDeBorrador::toma(fichero)->borra_borrador();
        EXPECT_THAT(ficheros(), IsEmpty());
    }

    TEST_F(BorradoresEnCarpeta_, what_a_process_killed_while_writing_has_left_is_swept_away)
    {
        fs::create_directories(borradores.carpeta());
        for (const auto* resto :
            { "cargo-9-1.json.parcial", "cargo-9-1.json.cerrojo", "cargo-9-2.json.cerrojo" })
            std::ofstream(borradores.carpeta() / resto) << "{";
        std::ofstream(borradores.carpeta() / "notas.txt") << "de otro";
        EXPECT_THAT(ofrecidos(), IsEmpty());
        EXPECT_THAT(ficheros(), testing::ElementsAre(".txt"));
    }

    TEST_F(BorradoresEnCarpeta_, each_company_user_and_place_has_a_folder_of_its_own)
    {
        setenv("XDG_STATE_HOME", (temporal / "xdg").c_str(), 1);
        const auto de = [&](const char* lugar, std::int16_t empresa, std::int32_t usuario) {
            return BorradoresEnCarpeta::de_la_persona(temporal / lugar, empresa, usuario)->carpeta();
        };
        const auto suya = de("datos", 3, 7);
        EXPECT_EQ(suya.parent_path(), temporal / "xdg/atipicos/borradores");
        EXPECT_EQ(de("otro/../datos", 3, 7), suya);
        EXPECT_NE(de("otro", 3, 7), suya);
        EXPECT_NE(de("datos", 4, 7), suya);
        EXPECT_NE(de("datos", 3, 8), suya);
        setenv("XDG_STATE_HOME", "relativa", 1); // which is to be as if it were not set
        setenv("HOME", (temporal / "casa").c_str(), 1);
        EXPECT_EQ(de("datos", 3, 7).parent_path(), temporal / "casa/.local/state/atipicos/borradores");
        unsetenv("XDG_STATE_HOME");
        unsetenv("HOME");
        EXPECT_EQ(BorradoresEnCarpeta::de_la_persona(temporal / "datos", 3, 7), nullptr);
    }

}
}
