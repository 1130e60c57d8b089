// The program of a folder's tests. PROGRAM NAME runs those that are written in NAME.cpp alone, as ctest does;
// without a name it runs them all, or those of --gtest_filter.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
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
    return RUN_ALL_TESTS();
}
