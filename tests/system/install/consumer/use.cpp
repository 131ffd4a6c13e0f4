// SPDX-License-Identifier: MIT
#include <vesk/Cyl.h>
#include <vesk/RecordWriter.h>

int main() {
  Vesk::RecordWriter file("veskcpp.dat");
  const Vesk::Cyl pipe({0, 0, 0}, {0, 0, 10}, 5);
  const int lines = file.write(pipe);
  file.close();
  return lines == 1 && pipe.volume() > 196 ? 0 : 1;
}
