#pragma once

#include <string>

#include "Support/Export.h"

// Paths in the Windows form: the separator is the backslash, a drive is a letter and a colon, a
// network path begins with two backslashes. All are safe from any thread. The odd corners named
// below are kept on purpose: stored paths depend on them.
namespace vemra {

// 1 when p begins with two backslashes or with an ASCII letter and a colon, else 0. A single
// leading backslash is not absolute.
SUPPORT_API int IsAbsolutePath(const std::string& p);

// Removes one trailing backslash if there is one.
SUPPORT_API void RemoveLastSlash(std::string& p);

// Joins the folder base and the relative path rel.
// - An empty or absolute rel is the result.
// - A rel with a leading backslash: what base has before its first colon, followed by rel. The
//   colon is not kept, so "C:\x" and "\dir" give "C\dir". rel itself when base has no colon.
// - "." as a folder in rel does nothing. A run of two or more dots goes up one folder, however long
//   it is. A folder that begins with a dot and holds anything else, an empty folder name, and going
//   up from a base without a backslash give the empty string. The last name in rel is never read as
//   dots.
SUPPORT_API std::string ConnectPaths(const std::string& base, const std::string& rel);

// path relative to the folder base, which has no trailing backslash. path itself when the two do
// not begin with the same drive (or the same two characters), and when either is shorter than two
// characters; the empty string when path is a folder that holds base. Names compare without regard
// to case. n levels up from base are n + 1 dots: "..\x", "...\x", "....\x". ConnectPaths reads
// every such run as one level.
SUPPORT_API std::string MakeRelativePath(const std::string& path, const std::string& base);

// Creates every missing folder along path, the last name only when lastIsFile is 0. 1 when all
// exist in the end; 0 when one could not be created, which holds for every path on a missing drive
// and for every network path, whose server name is not a folder. What was created stays.
SUPPORT_API int CreatePath(const std::string& path, int lastIsFile);

// out = dir + path from its last backslash on, or dir + path when it has none, so "C:name" is kept
// whole. dir has no trailing backslash. out may be one of the arguments.
SUPPORT_API void ReplaceDir(const std::string& path, const std::string& dir, std::string& out);

// Folder of the running program, without a trailing backslash.
SUPPORT_API std::string GetAppDirectory();

}  // namespace vemra
