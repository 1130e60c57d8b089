#include "runtime/Unicode.hpp"

#include <gmock/gmock.h>

namespace atipicos {
namespace {

    TEST(Unicode, texts_come_back_as_they_went)
    {
        for (const auto* texto :
            { "", "plain", "Ñandú, 3 €", "😀 y más", "\x7f\xc2\x80\xdf\xbf\xe0\xa0\x80\xef\xbf\xbf" })
            EXPECT_EQ(a_utf8(a_utf16(texto)), texto);
        EXPECT_EQ(a_utf16("ñ€😀"), u"\u00f1\u20ac\U0001f600");
    }

    TEST(Unicode, what_is_no_utf8_becomes_the_replacement_character)
    {
        for (const auto* malo :
            { "\x80", "\xc0\xaf", "\xe2\x82", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\xff" })
            EXPECT_EQ(a_utf16(std::string("a") + malo)[1], u'\ufffd');
        EXPECT_EQ(a_utf16("\xe2\x82x"), u"\ufffd\ufffdx") << "what follows is kept";
    }

    TEST(Unicode, half_a_pair_becomes_the_replacement_character)
    {
        EXPECT_EQ(a_utf8(std::u16string{ 0xd83d, u'x', 0xde00 }), "\uFFFDx\uFFFD");
    }

}
}
