#pragma once

#include <string>

namespace ml::settings {

/// Batch rename.
struct RenameSettings {
  int firstNumber = 1;
  int firstNumber1 = 1;
  int firstNumber2 = 1;
  int firstNumber3 = 1;
  int digits = 4;        ///< at most 7
  int lowerCaseExt = 0;  ///< case conversion, 0..3
  int continuousNumbering = 1;
  std::string formatString = "%f_%n";
  std::string formatString2 = "%d_%t_%u";
  std::string formatString3 = "%d_%ssec_f%A_ISO%i_u";
  std::string custom1Name = "Custom style 1";
  std::string custom2Name = "Custom style 2";
  std::string custom3Name = "Custom style 3";
  int sortMethod = 0;  ///< 0, 1 or 2
  int style = 0;
};

}  // namespace ml::settings
