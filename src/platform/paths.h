#pragma once

#include <string>
#include <string_view>

/// Names of files. A path is a string of bytes with "/" between its components; nothing here assumes an
/// encoding, and nobody else in the program splits or compares names.
namespace ml::platform {

/// A path in three pieces that give the path again when joined. The directory ends in "/" unless it is
/// empty; the extension begins with its dot, is the part from the last dot of the last component on, and
/// may be the whole name (".jpeg" has an empty stem).
struct PathParts {
  std::string_view directory, stem, extension;
};

/// Views into `path`, which must outlive them.
PathParts SplitPath(std::string_view path);
/// The last component, stem and extension.
std::string_view FileName(std::string_view path);
/// Everything up to and including the last "/", empty if there is none.
std::string_view DirectoryOf(std::string_view path);
/// `path` with its extension replaced; `extension` brings its own dot.
std::string WithExtension(std::string_view path, std::string_view extension);
/// `directory` + `name` with exactly one "/" between them; `name` alone if `directory` is empty.
std::string JoinPath(std::string_view directory, std::string_view name);

/// `path` made absolute from the working directory, "." and ".." taken out by text; symbolic links stay.
/// The empty path stays empty.
std::string AbsolutePath(std::string_view path);
/// The same for a directory, without trailing "/" except for the root.
std::string normaliseDirectory(std::string_view directory);

/// For questions of equality: Unicode simple case folding where the bytes are valid UTF-8, ASCII folding
/// of the bytes that are not.
std::string nameFold(std::string_view name);
bool EqualsFolded(std::string_view a, std::string_view b);
/// Bytes 'A'..'Z' lowered, all others kept.
std::string AsciiLower(std::string_view text);
/// Bytes 'a'..'z' raised, all others kept.
std::string AsciiUpper(std::string_view text);
bool EqualsAsciiFolded(std::string_view a, std::string_view b);
/// For sorting: below, at or above 0 by the ASCII-folded bytes; equal ones are decided by the bytes as they
/// stand, so that only identical names compare equal.
int CompareNoCase(std::string_view a, std::string_view b);
/// Whether `name` ends in `ending` (lower case), ASCII case ignored.
bool EndsWithNoCase(std::string_view name, std::string_view ending);

/// Whether a bare name can be given to a file or directory, here and where the files may be taken: not empty, "." or
/// "..", at most 255 bytes, and without a zero or one of \ / : * ? " < > |. Files may bear other names all the same.
bool IsPortableName(std::string_view name);

/// Whether both paths lead to one file: by device and inode where both exist, otherwise by folded text.
bool SameFile(const std::string& a, const std::string& b);

}  // namespace ml::platform
