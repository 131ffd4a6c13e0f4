// SPDX-License-Identifier: MIT
// Writes all eleven elements. VESK is the folder of the library:
//
//     c++ -c -I"$VESK/include" model.cpp
//     c++ model.o -o model -L"$VESK/lib" -lCVeskDll -Wl,-rpath,"$VESK/lib"
//     ./model fan
//
// makes veskfan.dat. C++ catches what the library throws by its class, if the compiler is of
// the family that built the library (GCC or Clang; MinGW for the DLL, not MSVC).
#include <vesk.h>

#include <array>
#include <cerrno>
#include <iostream>
#include <string>
#include <system_error>

#include <vesk/GeEx.h>

namespace {

using Xyz = std::array<double, 3>;

// The open file. It is closed when the object goes, also when an exception passes by.
class VeskFile {
 public:
  explicit VeskFile(const std::string& name) : open_(vk_openVesk(name.c_str()) == 1) {}
  ~VeskFile() { vk_openVesk(nullptr); }
  VeskFile(const VeskFile&) = delete;
  VeskFile& operator=(const VeskFile&) = delete;

  explicit operator bool() const { return open_; }

  // The reason if the disk refused a part of the file.
  std::error_code close() {
    errno = 0;
    vk_openVesk(nullptr);
    return {errno, std::generic_category()};
  }

  // Every element has its number in the header.
  void number(int n) { vk_setHeader("DUCT-7", "A1", n); }

 private:
  bool open_;
};

void writeModel(VeskFile& file) {
  const auto at = [](double x, double y, double z) { return Xyz{x, y, z}; };
  file.number(1);
  vk_writePnt(at(1, 2, 3).data());
  file.number(2);
  vk_writeSeg(at(0, 0, 0).data(), at(1000, 0, 0.5).data());
  file.number(3);
  vk_writeTri(at(0, 0, 0).data(), at(100, 0, 0).data(), at(0, 50, 0).data());
  file.number(4);
  vk_writeQua(at(0, 0, 10).data(), at(100, 0, 10).data(), at(100, 50, 10).data(),
              at(0, 50, 10).data());
  file.number(5);
  vk_writeTxt(at(1, 2, 0).data(), at(1, 0, 0).data(), at(0, 1, 0).data(), 0.5, 2.5, 7, 1, "Fan 1");
  file.number(6);
  vk_writeBox(at(0, 0, 0).data(), at(10, 0, 0).data(), at(0, 20, 0).data(), at(0, 0, 30).data());
  file.number(7);
  vk_writeRed(at(0, 0, 0).data(), at(10, 0, 0).data(), at(0, 10, 0).data(), at(10, 10, 0).data(),
              at(2, 2, 20).data(), at(8, 2, 20).data(), at(2, 8, 20).data(), at(8, 8, 20).data());
  file.number(8);
  vk_writeCyl(at(1, 2, 3).data(), at(1, 2, 13).data(), 219.1);
  file.number(9);
  vk_writeCon(at(0, 0, 0).data(), at(0, 0, 100).data(), 168.3, 114.3);
  file.number(10);
  vk_writeTor(at(0, 0, 0).data(), at(100, 0, 0).data(), at(0, 100, 0).data(), 20);
  file.number(11);
  vk_writeElb(at(0, 0, 0).data(), at(0, 0, 10).data(), at(50, 0, 0).data(), at(0, 50, 0).data(),
              30);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: model NAME\n";
    return 2;
  }
  VeskFile file(argv[1]);
  if (!file) {
    std::cerr << "vesk" << argv[1] << ".dat: cannot be opened for writing\n";
    return 1;
  }
  try {
    writeModel(file);
  } catch (const GeEx::NullPtr& e) {
    std::cerr << e.where << ": " << e.what() << '\n';  // a null array
    return 1;
  } catch (const GeEx::NullDir& e) {
    std::cerr << e.where << ": " << e.what() << '\n';  // an elbow without a direction
    return 1;
  }
  if (const std::error_code error = file.close()) {
    std::cerr << "vesk" << argv[1] << ".dat: " << error.message() << '\n';
    return 1;
  }
  return 0;
}
