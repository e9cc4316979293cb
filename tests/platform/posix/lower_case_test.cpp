// The program's own table of small letters beside the one of the C library.
#include "text/lower_case.h"

#include <gtest/gtest.h>
#include <locale.h>
#include <wctype.h>

namespace kalmora::text {
namespace {

TEST(LowerCase, AgreesWithTheLibraryOverAllCharacters) {
    const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!locale) GTEST_SKIP() << "no locale C.UTF-8 on this machine";
    for (char32_t value = 0; value < 0x110000; ++value)
        ASSERT_EQ(LowerCase(value), static_cast<char32_t>(towlower_l(static_cast<wint_t>(value), locale)))
            << std::hex << static_cast<unsigned>(value);
    freelocale(locale);
}

}  // namespace
}  // namespace kalmora::text
