// What `atipicos registrar` takes of time and memory, the real program on SQLite: a file of 40,000 claims of
// five rows, and one of a single claim beside 1,000,000 charges. Other numbers: bench_registrar CLAIMS
// CHARGES.
#include "bench/Desnudo.hpp"
#include "bench/Medida.hpp"
#include "bench/MuchosCargos.hpp"
#include "host/bases/Bases.hpp"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace atipicos::bench {
namespace {

    constexpr int lineas = 5;

    /// Claims of all suppliers of the sample company, in a year in which there are no other charges.
    void escribe_reclamaciones(const std::filesystem::path& fichero, int cuantas)
    {
        std::ofstream salida(fichero);
        salida
            << "referencia;almacen;proveedor;fecha;observaciones;franquiciado;articulo;descripcion;unidades;"
               "costo;observaciones_linea\n";
        constexpr std::array<const char*, 3> costos{ "5,6325", "1,1975", "12,5000" };
        for (int i = 1; i <= cuantas; ++i)
            for (int linea = 0; linea < lineas; ++linea)
                salida << "R" << i << ";" << 1 + i % 4 << ";" << 101 + i % 14 << ";"
                       << (i % 28 < 9 ? "0" : "") << 1 + i % 28 << "/11/2025;Mercancía dañada, albarán " << i
                       << ";N;" << 1001 + (i + linea) % 32 << ";Lata abollada;" << 1 + (i + linea) % 40 << ";"
                       << costos.at(static_cast<std::size_t>(linea) % costos.size()) << ";lote " << i << "\n";
        if (!salida.flush())
            throw std::runtime_error("the claims cannot be written");
    }

    /// The program as a child of this one, what it writes kept in a file.
    /// @return the most memory that it has had, in MB
    double registra(const std::filesystem::path& datos, const std::filesystem::path& reclamaciones,
        const std::filesystem::path& salida)
    {
        const pid_t hijo = fork();
        if (hijo == 0) {
            const int destino = open(salida.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            dup2(destino, STDOUT_FILENO);
            dup2(destino, STDERR_FILENO);
            execl(ATIPICOS_PROGRAMA, ATIPICOS_PROGRAMA, "registrar", reclamaciones.c_str(), "--datos",
                datos.c_str(), nullptr);
            _exit(127);
        }
        int estado = -1;
        rusage uso{};
        if (hijo < 0 || wait4(hijo, &estado, 0, &uso) != hijo || estado != 0)
            throw std::runtime_error("the program has not recorded the claims: " + salida.string());
        return static_cast<double>(uso.ru_maxrss) / 1024;
    }

    long cargos_en(const std::filesystem::path& datos)
    {
        const auto base = abre(datos / "empresa.db", true);
        return std::stol(
            lee_filas(base.get(), "SELECT COUNT(*) FROM Proveedores_Cargos_Atipicos WHERE Asiento > 0")
                .at(0)
                .at(0));
    }

    struct Registrado {
        Medida medida = {};
        double megas = 0;
    };

    /// One more file in a company.
    void mide(const Carpeta& carpeta, const std::filesystem::path& datos, int cuantas, Registrado& registrado)
    {
        const auto fichero = carpeta / "reclamaciones.csv";
        escribe_reclamaciones(fichero, cuantas);
        const auto antes = cargos_en(datos);
        registrado.medida.mide([&] {
            registrado.megas = std::max(registrado.megas, registra(datos, fichero, carpeta / "salida.txt"));
        });
        if (cargos_en(datos) != antes + cuantas)
            throw std::runtime_error("the charges and their entries are not there");
    }

    void escribe(const Registrado& registrado)
    {
        registrado.medida.escribe("atipicos registrar");
        std::printf("  peak memory of the program %.1f MB\n", registrado.megas);
    }

    void muchas(int cuantas)
    {
        const Carpeta carpeta;
        const auto datos = carpeta / "datos";
        bases::crea_bases(datos, false);
        Registrado registrado;
        mide(carpeta, datos, cuantas, registrado);
        std::printf("%d claims of %d rows\n", cuantas, lineas);
        escribe(registrado);
        std::printf("  %.3f ms a claim\n\n", registrado.medida.mediana() / cuantas);
    }

    /// The same claim in a company that has as many charges each time.
    void una_entre(std::size_t cargos)
    {
        const Carpeta carpeta;
        const auto datos = carpeta / "datos";
        bases::crea_bases(datos, false);
        ejecuta(abre(datos / "empresa.db", false).get(), muchos_cargos(cargos));
        Registrado registrado;
        for (int vez = 0; vez < 5; ++vez) {
            const auto copia = carpeta / ("datos" + std::to_string(vez)).c_str();
            std::filesystem::create_directories(copia);
            std::filesystem::copy_file(datos / "empresa.db", copia / "empresa.db");
            mide(carpeta, copia, 1, registrado);
            std::filesystem::remove_all(copia);
        }
        std::printf("One claim beside %zu charges\n", cargos);
        escribe(registrado);
    }

}
}

int main(int argc, char** argv)
{
    try {
        atipicos::bench::muchas(argc > 1 ? std::stoi(argv[1]) : 40'000);
        atipicos::bench::una_entre(argc > 2 ? std::stoul(argv[2]) : 1'000'000);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
