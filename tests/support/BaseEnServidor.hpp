#pragma once

#include "tests/support/ServidorPostgresql.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace atipicos::pruebas {

/// An empty database of its own for each test, on a server that the tests of a suite share; skipped where
/// there can be none.
class BaseEnServidor : public testing::Test {
protected:
    static inline std::unique_ptr<ServidorPostgresql> servidor;

    explicit BaseEnServidor(std::string base)
        : m_base(std::move(base))
    {
    }

    static void TearDownTestSuite() { servidor.reset(); }

    void SetUp() override
    {
        if (const auto falta = ServidorPostgresql::falta(); !falta.empty())
            GTEST_SKIP() << falta;
        if (!servidor)
            servidor = std::make_unique<ServidorPostgresql>();
        servidor->crea_base(m_base);
    }
    void TearDown() override
    {
        if (servidor)
            servidor->borra_base(m_base);
    }

private:
    std::string m_base;
};

} // namespace atipicos::pruebas
