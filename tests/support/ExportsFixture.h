// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_EXPORTSFIXTURE_H
#define VESK_TESTS_SUPPORT_EXPORTSFIXTURE_H

#include <gtest/gtest.h>
#include <vesk.h>

#include <string>

#include "api/Globals.h"
#include "support/TempFolder.h"

namespace VeskTest {

// Runs exports in a private folder, with the library as it is when loaded.
class ExportsFixture : public testing::Test {
 protected:
  ExportsFixture() {
    vk_openVesk(nullptr);
    Vesk::outFile.output() = Vesk::Output();
    Vesk::elementHolder = Vesk::ElementHolder();
  }
  ~ExportsFixture() override { vk_openVesk(nullptr); }

  // Closes the open file and gives the bytes of "vesk" + name + ".dat".
  static std::string written(const std::string& name) {
    vk_openVesk(nullptr);
    return readFile("vesk" + name + ".dat");
  }

  TempFolder folder;
};

}  // namespace VeskTest

#endif
