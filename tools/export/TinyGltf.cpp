// What tinygltf consists of.
#define TINYGLTF_IMPLEMENTATION
#include "export/TinyGltf.h"
