// A host that has none of this tree's headers: tables of functions, identifiers as bytes, the module by its
// path.

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace {

using Result = std::int32_t;

struct Id {
  std::uint32_t a;
  std::uint16_t b, c;
  std::uint8_t d[8];
};

constexpr Id kUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Id kFactory = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr Id kCoordClass = {0x882DD087, 0x033E, 0x11D4, {0xA3, 0x19, 0, 0, 0, 0, 0, 0}};
constexpr Id kCoord = {0x882DD086, 0x033E, 0x11D4, {0xA3, 0x19, 0, 0, 0, 0, 0, 0}};
constexpr Id kPixmapClass = {0x5301619A, 0x211B, 0x4C86, {0xB7, 0xBB, 0xD2, 0x66, 0x14, 0x85, 0xE7, 0x11}};
constexpr Id kPixmap = {0x4EE20F33, 0x2F46, 0x43B4, {0x83, 0x44, 0x4C, 0x25, 0x22, 0xAD, 0x59, 0x01}};

struct Bytes4 {
  std::uint8_t m_Values[4];
};

/// Calls the operation in a slot of an object.
template <class Return = Result, class... Arguments>
Return Call(void* aObject, int aSlot, Arguments... aArguments) {
  void** table = *static_cast<void***>(aObject);
  return reinterpret_cast<Return (*)(void*, Arguments...)>(table[aSlot])(aObject, aArguments...);
}

class ForeignHost : public testing::Test {
 protected:
  void SetUp() override {
    m_pModule = dlopen(GLLIB_MODULE_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(m_pModule, nullptr) << dlerror();
  }
  void TearDown() override {
    EXPECT_EQ(reinterpret_cast<Result (*)()>(dlsym(m_pModule, "DllCanUnloadNow"))(), 0);
    dlclose(m_pModule);
  }

  void* Make(const Id& aClass, const Id& aInterface) {
    void *factory = nullptr, *object = nullptr;
    const auto get =
        reinterpret_cast<Result (*)(const Id*, const Id*, void**)>(dlsym(m_pModule, "DllGetClassObject"));
    EXPECT_EQ(get(&aClass, &kFactory, &factory), 0);
    EXPECT_EQ(Call(factory, 3, static_cast<void*>(nullptr), &aInterface, &object), 0);
    Call<std::uint32_t>(factory, 2);
    return object;
  }

  void* m_pModule = nullptr;
};

}  // namespace

TEST_F(ForeignHost, MovesACoordinateSystem) {
  void* coord = Make(kCoordClass, kCoord);
  ASSERT_NE(coord, nullptr);
  EXPECT_EQ(Call(coord, 5, 1.0, 2.0, 3.0), 0);  // SetOrigin3d
  EXPECT_EQ(Call(coord, 10, 1.0), 0);           // MoveForward
  EXPECT_EQ(Call(coord, 8, 0.5), 0);            // MoveRight
  double point[3] = {};
  EXPECT_EQ(Call(coord, 3, point), 0);  // GetOrigin
  EXPECT_EQ(point[0], 1.5);
  EXPECT_EQ(point[1], 2.0);
  EXPECT_EQ(point[2], 2.0);
  double matrix[16] = {};
  EXPECT_EQ(Call(coord, 22, matrix), 0);  // GetMatrix16d
  EXPECT_EQ(matrix[12], 1.5);
  EXPECT_EQ(matrix[15], 1.0);
  void* unknown = nullptr;
  EXPECT_EQ(Call(coord, 0, &kUnknown, &unknown), 0);
  EXPECT_EQ(Call<std::uint32_t>(unknown, 2), 1u);
  EXPECT_EQ(Call<std::uint32_t>(coord, 2), 0u);
}

TEST_F(ForeignHost, PassesPixelsByValue) {
  void* pixmap = Make(kPixmapClass, kPixmap);
  ASSERT_NE(pixmap, nullptr);
  EXPECT_EQ(Call(pixmap, 3, 3, 2, Bytes4{{10, 20, 30, 40}}), 0);  // Initialize
  EXPECT_EQ(Call(pixmap, 10, 2, 1, Bytes4{{1, 2, 3, 4}}), 0);     // SetPixel
  Bytes4 first{}, last{};
  EXPECT_EQ(Call(pixmap, 9, 0, 0, &first), 0);  // GetPixel
  EXPECT_EQ(Call(pixmap, 9, 2, 1, &last), 0);
  EXPECT_EQ(first.m_Values[0], 10);
  EXPECT_EQ(first.m_Values[3], 40);
  EXPECT_EQ(last.m_Values[0], 1);
  EXPECT_EQ(last.m_Values[3], 4);
  EXPECT_EQ(Call<std::uint32_t>(pixmap, 2), 0u);
}
