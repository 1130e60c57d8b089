#include "runtime/FechaTecleada.hpp"

#include <gtest/gtest.h>

#include <ostream>

namespace atipicos {
namespace {

    struct CasoTecleado {
        const char* tecleado;
        const char* fecha; ///< empty: none

        friend std::ostream& operator<<(std::ostream& salida, const CasoTecleado& caso)
        {
            return salida << '"' << caso.tecleado << '"';
        }
    };

    class FechaTecleada : public testing::TestWithParam<CasoTecleado> { };

    TEST_P(FechaTecleada, is_completed)
    {
        const auto partida = Date::de_texto("09/04/2025");
        const auto fecha = completa_fecha(GetParam().tecleado, partida.value());
        EXPECT_EQ(fecha ? fecha->texto() : "", GetParam().fecha);
    }

    INSTANTIATE_TEST_SUITE_P(Tabla, FechaTecleada,
        testing::Values(CasoTecleado{ "15", "15/04/2025" }, CasoTecleado{ "5", "05/04/2025" },
            CasoTecleado{ "15//", "15/04/2025" }, CasoTecleado{ "15/", "15/04/2025" },
            CasoTecleado{ "1511", "15/11/2025" }, CasoTecleado{ "15/11/", "15/11/2025" },
            CasoTecleado{ "15/1/", "15/01/2025" }, CasoTecleado{ "151126", "15/11/2026" },
            CasoTecleado{ "15/11/26", "15/11/2026" }, CasoTecleado{ "1/2/00", "01/02/2000" },
            CasoTecleado{ "15112024", "15/11/2024" }, CasoTecleado{ "1/2/2024", "01/02/2024" },
            CasoTecleado{ "290224", "29/02/2024" }, CasoTecleado{ "+3", "12/04/2025" },
            CasoTecleado{ "+30", "09/05/2025" }, CasoTecleado{ "-9", "31/03/2025" },
            CasoTecleado{ "+0", "09/04/2025" }));

    INSTANTIATE_TEST_SUITE_P(Ninguna, FechaTecleada,
        testing::Values(CasoTecleado{ "", "" }, CasoTecleado{ "//", "" }, CasoTecleado{ "31", "" },
            CasoTecleado{ "0", "" }, CasoTecleado{ "290225", "" }, CasoTecleado{ "15/13/", "" },
            CasoTecleado{ "15//2025", "" }, CasoTecleado{ "/11/2025", "" }, CasoTecleado{ "15/11/2", "" },
            CasoTecleado{ "15/11/202", "" }, CasoTecleado{ "15/11/20255", "" }, CasoTecleado{ "151/1/", "" },
            CasoTecleado{ "1/2/3/4", "" }, CasoTecleado{ "+", "" }, CasoTecleado{ "+-3", "" },
            CasoTecleado{ "+3d", "" }, CasoTecleado{ "+999999999999", "" }, CasoTecleado{ "-999999", "" },
            CasoTecleado{ "h", "" }, CasoTecleado{ "-5/2/25", "" }));

}
}
