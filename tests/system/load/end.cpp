// SPDX-License-Identifier: MIT
// A host with the static library, whose objects call the exports before main and behind it.
#include <vesk.h>

namespace {

const double kStart[3] = {0, 0, 0};
const double kEnd[3] = {0, 0, 10};

// Opens the file before main; writes the last element, and closes, when all is over.
struct Session {
  Session() { isOpen = vk_openVesk("end") == 1; }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() {
    vk_writeCyl(kStart, kEnd, 5);
    vk_openVesk(nullptr);
    vk_openVesk("behind");  // stays open: the library closes it
    vk_writeCyl(kStart, kEnd, 5);
  }

  bool isOpen = false;
};

const Session session;

}  // namespace

int main() { return session.isOpen && vk_writeCyl(kStart, kEnd, 5) == 1 ? 0 : 1; }
