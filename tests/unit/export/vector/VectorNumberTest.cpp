#include "export/vector/VectorNumber.h"

#include "util/AppError.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

namespace terravo {
namespace {

TEST(VectorNumberTest, WritesEveryDigitWithoutAnExponent) {
    struct Case {
        double value;
        const char* real;
        const char* brief;
    };
    const Case cases[] = {
        {0.1, "0.1", "0.1"},
        {100000, "100000.0", "100000"},
        {-0.0, "0.0", "0"},
        {-512.797, "-512.797", "-512.797"},
        {1e22, "10000000000000000000000.0", "10000000000000000000000"},
        {1.5e-7, "0.00000015", "0.00000015"},
        {4527271.49, "4527271.49", "4527271.49"},
    };
    for (const Case& c : cases) {
        std::string text;
        VectorNumber::AppendReal(text, c.value);
        text += ' ';
        VectorNumber::AppendShort(text, c.value);
        EXPECT_EQ(text, std::string(c.real) + " " + c.brief);
    }
    std::string text;
    VectorNumber::AppendReal(text, -std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(std::strtod(text.c_str(), nullptr), -std::numeric_limits<double>::denorm_min());
    VectorNumber::AppendReal(text, std::numeric_limits<double>::max());
    EXPECT_THROW(VectorNumber::AppendShort(text, std::numeric_limits<double>::quiet_NaN()),
                 AppError);
    EXPECT_THROW(VectorNumber::AppendReal(text, std::numeric_limits<double>::infinity()), AppError);
}

} // namespace
} // namespace terravo
