#include <tyx/TyxSize3D.h>

#include <sstream>

#include <gtest/gtest.h>

#include <tyx/TyxVariant.h>

namespace {

using tyx::TyxSize3D;

TEST(TyxSize3DTest, VolumeAndEmptiness)
{
    const TyxSize3D<unsigned int> empty(0, 5, 5);
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_EQ(empty.volume(), 0u);
    // The product is formed in 64 bits.
    EXPECT_EQ(TyxSize3D<unsigned int>(100000, 100000, 3).volume(), 30000000000u);
    EXPECT_EQ(TyxSize3D<double>(0.5, 4.0, 2.0).volume(), 4u);
    EXPECT_EQ(TyxSize3D<double>(-1.0, 4.0, 2.0).volume(), 0u);
    EXPECT_EQ(TyxSize3D<double>(1e10, 1e10, 1e10).volume(), UINT64_MAX);
}

TEST(TyxSize3DTest, StreamForms)
{
    EXPECT_EQ(static_cast<tyx::TyxString>(TyxSize3D<unsigned int>(640, 480, 3)), L"(640,480,3)");
    TyxSize3D<unsigned int> read;
    std::wistringstream wide(L"(640.7,480,3)");
    wide >> read;
    EXPECT_EQ(read, TyxSize3D<unsigned int>(640, 480, 3));
    std::istringstream negative("(-1,2,3)");
    negative >> read;
    EXPECT_TRUE(negative.fail());
    EXPECT_EQ(read, TyxSize3D<unsigned int>());
}

TEST(TyxSize3DTest, JoinsTheVariantAsCode22)
{
    const tyx::TyxVariant size(TyxSize3D<unsigned int>(0, 5, 5));
    EXPECT_EQ(size.type().toEnum(), 22);
    std::wostringstream form;
    form << size;
    EXPECT_EQ(form.str(), L"TyxU32Size,(0,5,5)");
    // As a bool a size asks whether any field is set, not whether it is empty.
    EXPECT_TRUE(size.value<bool>());
    EXPECT_FALSE(tyx::TyxVariant(TyxSize3D<unsigned int>()).value<bool>());
    EXPECT_EQ(tyx::TyxVariant("(640,480,3)").value<TyxSize3D<unsigned int>>(),
              TyxSize3D<unsigned int>(640, 480, 3));
}

} // namespace
