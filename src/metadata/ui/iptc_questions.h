#pragma once

#include <cstddef>
#include <string>

class QWidget;

/// What the sheet asks, with buttons that say what they do.
namespace ml::metadata::ui {

enum class ChangesAnswer { Apply, Discard, Cancel };
/// What to do with changes to the image at `path`.
ChangesAnswer AskAboutChanges(const std::string& path, QWidget* parent);

/// Whether a file at `path` may replace what was changed.
bool AskToReplace(const std::string& path, QWidget* parent);
/// Whether to write into so many images.
bool AskToWrite(std::size_t count, QWidget* parent);

}  // namespace ml::metadata::ui
