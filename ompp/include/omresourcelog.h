// What the log says of files and resources that are there and cannot be used as they are.
#pragma once

#include "omistream.h"
#include "omlog.h"

#include <string_view>

/// A file whose reading this thread was just refused: why, and `otherwise`, which is what happens
/// without it. No line for one that is not there.
void OMLogUnreadable(std::string_view file, std::string_view otherwise);

/// "WHAT ID of LIBRARY PROBLEM", and that it has to be packed anew. The stream names the library.
void OMLogResource(OMLog::Kind kind, std::string_view what, int id, const OMIStream& stream,
                   std::string_view problem);
