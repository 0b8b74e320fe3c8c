// Tests of the property usage bits.
#include <tyx/TyxMetaFlag.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

using tyx::TyxMetaFlag;

TEST(TyxMetaFlagTest, NormalisesReturnAndFileBitsAndNamesTheirRoles)
{
    EXPECT_EQ(TyxMetaFlag(0x0082u).value(), 0x0080u);
    EXPECT_EQ(TyxMetaFlag(0x1802u).value(), 0x0002u);
    EXPECT_EQ(TyxMetaFlag(0x2000u).value(), 0x2000u);
    // The system bit hides; each file bit names one direction.
    EXPECT_TRUE(TyxMetaFlag(0x0100u).isHidden());
    EXPECT_FALSE(TyxMetaFlag(0x0100u).isReadable());
    EXPECT_TRUE(TyxMetaFlag(0x0800u).isInFilename());
    EXPECT_FALSE(TyxMetaFlag(0x0800u).isOutFilename());
}

TEST(TyxMetaFlagTest, TextFormListsSetBitsLowFirstAndReadsBackIgnoringCaseAndUnknownWords)
{
    EXPECT_EQ(TyxMetaFlag(0u).toString(), L"(Editable)");
    EXPECT_EQ(TyxMetaFlag(0x2000u).toString(), L"(Directory)");
    std::ostringstream narrow;
    narrow << TyxMetaFlag(0x0041u);
    EXPECT_EQ(narrow.str(), "(ReadOnly | Hidden)");
    EXPECT_EQ(TyxMetaFlag::fromString(L"nonsense").value(), 0u);
    EXPECT_EQ(TyxMetaFlag::fromString(L"Required|ignorable").value(), 0x0028u);
    EXPECT_EQ(TyxMetaFlag(TyxMetaFlag(0x1234u).toString()), TyxMetaFlag(0x1234u));
    // An unclosed parenthesis fails and keeps the value.
    std::wistringstream is(L"(ReadOnly | Hidden");
    TyxMetaFlag flags(0x0008u);
    is >> flags;
    EXPECT_TRUE(is.fail());
    EXPECT_EQ(flags.value(), 0x0008u);
}

} // namespace
