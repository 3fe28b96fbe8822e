// GLLIB_TEST_LOCALE names a locale, which is set for C and C++ before the tests begin.

#include <cstdlib>
#include <locale>

namespace {

// A missing locale ends the program: the tests would run without it.
[[maybe_unused]] const bool g_bSet = [] {
  const char* name = std::getenv("GLLIB_TEST_LOCALE");
  if (name != nullptr) std::locale::global(std::locale(name));
  return name != nullptr;
}();

}  // namespace
