// Gives a target every file of a folder, one after the other: the replay of its corpus without a fuzzer.
#include "tests/fuzz/Entrada.hpp"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

int main(int argc, char** argv)
{
    std::size_t ficheros = 0;
    for (int i = 1; i < argc; ++i)
        for (const auto& entrada : std::filesystem::directory_iterator(argv[i])) {
            std::ifstream flujo(entrada.path(), std::ios::binary);
            const std::string contenido{ std::istreambuf_iterator<char>(flujo), {} };
            std::cerr << entrada.path().filename() << '\n'; // the last one named is the one that failed
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(contenido.data()), contenido.size());
            ++ficheros;
        }
    std::cout << ficheros << " files\n";
    return ficheros > 0 ? 0 : 1;
}
