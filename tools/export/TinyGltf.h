#ifndef VESK_TOOLS_EXPORT_TINYGLTF_H
#define VESK_TOOLS_EXPORT_TINYGLTF_H

// The header of tinygltf as it is used here: no images.
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#define TINYGLTF_NO_EXTERNAL_IMAGE
#include <tiny_gltf.h>

#endif
