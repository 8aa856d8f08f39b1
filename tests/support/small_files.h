#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace ml::test {

struct SmallFile {
  std::string name;     ///< of the case, such as "NefBigEndian"
  std::string file;     ///< with the extension of its kind
  std::string content;  ///< a whole file, of a few kilobytes but for the thumbnail of "Eos1D"

  friend std::ostream& operator<<(std::ostream& out, const SmallFile& small) { return out << small.name; }
};

/// Files of every kind, with all the metadata that the kind carries, small enough to be read thousands of times.
const std::vector<SmallFile>& SmallFiles();
/// Files with the private notes of camera makers, in each form in which cameras write them; the raw ones hold no
/// picture.
const std::vector<SmallFile>& MakerNoteFiles();

}  // namespace ml::test
