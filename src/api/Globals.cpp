#include "api/Globals.h"

namespace Vesk {

OutFile outFile;
ElementHolder elementHolder;

}  // namespace Vesk
