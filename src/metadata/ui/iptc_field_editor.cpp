#include "metadata/ui/iptc_field_editor.h"

#include "metadata/ui/iptc_list_editor.h"
#include "metadata/ui/iptc_text_editor.h"

namespace ml::metadata::ui {

IptcFieldEditor* MakeIptcFieldEditor(const IptcField& field, QWidget* parent) {
  if (field.kind == IptcFieldKind::List) return new IptcListEditor(field, parent);
  return new IptcTextEditor(field, parent);
}

}  // namespace ml::metadata::ui
