// Paths as the text that menus, titles and settings hold.
//
// Data: UTF-8 text; a folder ends in its separator. Method: both separators split a path on every
// platform; the platform's own is written.
#pragma once

#include <string>

namespace terravo {

struct PathParts {
    std::string folder;    // up to and including the last separator, or empty
    std::string name;      // the rest
    std::string extension; // from the first "." anywhere in the path to its end, or empty
    bool exists = false;
};

/// Splits a path. The extension starts at the first "." of the whole path, so a folder name with a
/// dot gives a long one.
PathParts SplitPath(const std::string& path);

/// A file name up to its last "."; the whole name where that stands at its beginning or is missing.
std::string NameWithoutExtension(const std::string& name);

/// The path from the root, so that it still leads to the file from another folder; the path itself
/// when the present folder cannot be told.
std::string AbsolutePath(const std::string& path);

/// True when the length of the file can be read; false for a folder and on any error.
bool FileExists(const std::string& path);

} // namespace terravo
