#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace {

// Runs every test under the locale that CAMPOTIPO_TEST_LOCALE names, as an application that calls
// setlocale would run. Without it the tests run under "C", as every program begins.
class LocaleEnvironment : public testing::Environment {
 public:
  void SetUp() override {
    const char *name = std::getenv("CAMPOTIPO_TEST_LOCALE");
    if (name != nullptr && std::setlocale(LC_ALL, name) == nullptr) {
      FAIL() << "there is no locale " << name;
    }
  }
};

[[maybe_unused]] const testing::Environment *const environment =
    testing::AddGlobalTestEnvironment(new LocaleEnvironment);

}  // namespace
