// Tells the words that scripts can use: classes with their properties, methods and events, and
// commands.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

struct OMSClass;
struct OMSEntry;

namespace mps {

/// The game's classes and those before them, each once, the bases first.
[[nodiscard]] std::vector<const OMSClass*> allClasses();
/// "read", "write" or "read/write"; empty for what is no property.
[[nodiscard]] std::string_view accessOf(const OMSEntry& row);

/// A class begins with "class NAME BASE"; its words follow, a line each: "constructor NAME" where
/// scripts can make objects of it, "property NAME ACCESS", "method NAME", "event NAME", then two
/// blanks and what its table says of it. Commands are
/// "command NAME  ARGUMENTS". Without names all classes and the commands are told. False, after a
/// line on `errors`, for a name that is no class.
bool tellWords(const std::vector<std::string>& classes, std::ostream& out, std::ostream& errors);

/// The same of all classes and commands, and the words that statements begin with, for programs: an
/// object with the lists "classes", "commands" and "keywords". A class has "name", "base" (not the
/// first, whose name is empty), "arguments" where scripts can make objects of it, and "words". Each
/// of these has "kind", "name", "help", and, of properties, "access"; "passing" where objects have
/// it at times only.
void tellWordsJson(std::ostream& out);

} // namespace mps
