#include "settings/rows/rows.h"
#include "settings/rows/slot.h"

namespace ml::settings {

namespace {

template <auto... Members>
constexpr auto In = At<&Settings::editor, Members...>;

constexpr SettingRow kRows[] = {
    {"ShellOpenEditor", In<&EditorSettings::shellOpenEditor>},
    {"OpenEditorCmdLine", In<&EditorSettings::openEditorCmdLine>},
    {"EditorSupportsRaw", In<&EditorSettings::editorSupportsRaw>},
    {"AllowMultiEdit", In<&EditorSettings::allowMultiEdit>},
};

}  // namespace

std::span<const SettingRow> EditorRows() { return kRows; }

}  // namespace ml::settings
