#pragma once

#include <QStringList>
#include <string_view>

namespace ml::platform::ui {

/// The filters of a file dialog out of the form "Name|*.a;*.b|All files (*.*)|*.*||", in their order. The
/// patterns match in any case, whatever dialog the desktop shows: "Name (*.[aA] *.[bB])". Names lose patterns
/// that they repeat in brackets; "*.*" means every file.
QStringList NameFilters(std::string_view filter);

}  // namespace ml::platform::ui
