#include "app/preferences/pages/pages.h"

namespace ml::app {
namespace {

constexpr std::string_view kProgram = "Program";
constexpr std::string_view kImages = "Images";

constexpr PreferenceRow kRows[] = {
    {"ShellOpenEditor", kProgram, "&Use the program that the desktop names",
     "Images are edited with the desktop's program for their kind of file.", CheckField{}},
    {"OpenEditorCmdLine",
     kProgram,
     "&Command line:",
     "The program and its arguments; the path of the image follows them. Double quotes hold a path with blanks "
     "together.",
     CommandLineField{},
     {},
     {"ShellOpenEditor", false, "Counts only while the desktop's program is not used."}},
    {"EditorSupportsRaw", kImages, "The editor reads &raw files",
     "Otherwise the converted image of a raw file is edited.", CheckField{}},
    {"AllowMultiEdit", kImages, "&Edit all selected images", "Otherwise only the focused one is opened.", CheckField{}},
};

}  // namespace

std::span<const PreferenceRow> EditorRows() { return kRows; }

}  // namespace ml::app
