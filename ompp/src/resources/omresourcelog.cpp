#include "omresourcelog.h"

#include "omistreamonfile.h"

#include <string>

void OMLogUnreadable(std::string_view file, std::string_view otherwise) {
    const std::error_code why = platform::Files::lastRefusal();
    // Nothing can have a name that is too long, or lie in a file.
    if (why == std::errc::no_such_file_or_directory || why == std::errc::not_a_directory ||
        why == std::errc::filename_too_long)
        return;
    OMLog::write(OMLog::Kind::Error, std::string(file)
                                         .append(" is there and cannot be read: ")
                                         .append(why.message())
                                         .append(". ")
                                         .append(otherwise));
}

void OMLogResource(OMLog::Kind kind, std::string_view what, int id, const OMIStream& stream,
                   std::string_view problem) {
    std::string line = std::string(what).append(" ").append(std::to_string(id));
    if (const auto* file = dynamic_cast<const OMIStreamOnFile*>(&stream))
        line.append(" of ").append(file->fileName());
    line.append(" ").append(problem).append(". Pack it anew with zorbet-rsc");
    OMLog::write(kind, line);
}
