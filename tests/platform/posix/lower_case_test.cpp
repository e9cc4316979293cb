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
    // A library that has a letter of Unicode 15 may know capitals that the table's version, 14, does not.
    constexpr wint_t kLetterOfUnicode15 = 0x1B132;
    const bool isNewer = iswprint_l(kLetterOfUnicode15, locale) != 0;
    for (char32_t value = 0; value < 0x110000; ++value) {
        const char32_t small = LowerCase(value);
        if (isNewer && small == value) continue;
        ASSERT_EQ(small, static_cast<char32_t>(towlower_l(static_cast<wint_t>(value), locale)))
            << std::hex << static_cast<unsigned>(value);
    }
    freelocale(locale);
}

}  // namespace
}  // namespace kalmora::text
