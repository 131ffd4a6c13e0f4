// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_PAGE_H
#define VESK_TOOLS_VIEW_PAGE_H

#include <string>
#include <string_view>

#include "terminal/Streams.h"
#include "view/PageModel.h"

namespace VeskTool {

// The page without a model, as viewer/ makes it: one HTML file with two empty
// blocks for a model. Empty if the tool was built without it.
std::string pageTemplate();

// Throws a Failure with Exit::kUsage if there is no template.
void requirePageTemplate();

// Writes the page of a model.
//
// The first block is JSON, the second little-endian binary data, both compressed and
// in base64. The JSON points into the data by pairs of a byte offset and a count;
// every such block begins at a multiple of eight bytes. viewer/src/scene/decode.js
// reads them.
void writePage(TextSink& to, const PageModel& model, std::string_view title);

// The same with another template, for tests.
void writePage(TextSink& to, std::string_view page, const PageModel& model, std::string_view title);

}  // namespace VeskTool

#endif
