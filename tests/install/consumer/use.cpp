#include "output/OutFile.h"
#include "prims/Cyl.h"
int main() {
  const Vesk::Cyl pipe({0, 0, 0}, {0, 0, 10}, 5);
  return Vesk::OutFile().open("veskcpp.dat", Vesk::kTokens) && pipe.volume() > 196 ? 0 : 1;
}
