// The program of a folder's tests. PROGRAM NAME runs those that are written in NAME.cpp alone, as ctest does;
// without a name it runs them all, or those of --gtest_filter.
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

namespace {

/// A filter of all tests of that source; empty: there is none.
std::string las_de(const std::string& nombre)
{
    std::string filtro;
    const auto& todas = *testing::UnitTest::GetInstance();
    for (int i = 0; i < todas.total_test_suite_count(); ++i) {
        const auto& suite = *todas.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j)
            if (const auto& una = *suite.GetTestInfo(j); std::filesystem::path(una.file()).stem() == nombre)
                filtro += std::string(suite.name()) + "." + una.name() + ":";
    }
    return filtro;
}

/// Writes what is skipped, and why, into the file that ATIPICOS_OMITIDAS names: ctest shows nothing of a
/// program that passed.
class ApuntaOmitidas final : public testing::EmptyTestEventListener {
public:
    explicit ApuntaOmitidas(const char* fichero)
        : m_fichero(fichero, std::ios::app)
    {
    }

    void OnTestEnd(const testing::TestInfo& caso) override
    {
        for (int i = 0; i < caso.result()->total_part_count(); ++i) {
            const auto& resultado = caso.result()->GetTestPartResult(i);
            if (!resultado.skipped())
                continue;
            std::string porque = resultado.message();
            std::replace(porque.begin(), porque.end(), '\n', ' ');
            m_fichero << caso.test_suite_name() << '.' << caso.name() << '\t' << porque << std::endl;
        }
    }

private:
    std::ofstream m_fichero;
};

}

int main(int argc, char** argv)
{
    testing::InitGoogleMock(&argc, argv);
    if (argc > 1) {
        const auto filtro = las_de(argv[1]);
        if (filtro.empty()) {
            std::cerr << "There are no tests in " << argv[1] << ".cpp.\n";
            return EXIT_FAILURE;
        }
        if (GTEST_FLAG_GET(filter) == "*")
            GTEST_FLAG_SET(filter, filtro);
    }
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing else runs yet
    if (const char* fichero = std::getenv("ATIPICOS_OMITIDAS"))
        testing::UnitTest::GetInstance()->listeners().Append(
            std::make_unique<ApuntaOmitidas>(fichero).release()); // it is the list's from now on
    return RUN_ALL_TESTS();
}
