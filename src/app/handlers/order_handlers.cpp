#include "app/command_runner.h"
#include "app/file_dialogs.h"
#include "app/main_frame.h"
#include "app/messages.h"
#include "app/session.h"
#include "platform/errors.h"

namespace ml::app {
namespace {

using catalogue::SortMethod;

template <SortMethod method>
void Sort(CommandContext& context) {
  context.session.Images().SortBy(method);
}

void Reverse(CommandContext& context) { context.session.Images().ToggleReverseSort(); }
void MoveTaggedToStart(CommandContext& context) { context.session.Images().MoveTaggedToStart(); }
void SaveOrder(CommandContext& context) {
  auto& images = context.session.Images();
  if (!images.SaveCustomOrder()) throw platform::UserError(UnableToSaveOrder(images.Directory()));
}

void SaveOrderAs(CommandContext& context) {
  const auto path = context.session.Ask().saveAs({.title = std::string(kSaveOrderTitle),
                                                  .filter = std::string(kOrderFileFilter),
                                                  .defaultExtension = ".dat",
                                                  .start = context.session.Images().Directory()});
  if (path) context.session.Images().SaveCustomOrderAs(*path);
}

void LoadOrder(CommandContext& context) {
  const auto answer = OpenFile(context.frame, {.title = std::string(kLoadOrderTitle),
                                               .filter = std::string(kOrderFileFilter),
                                               .start = context.session.Images().Directory()});
  if (answer) context.session.Images().LoadCustomOrder(answer->path);
}

constexpr HandlerRow kHandlers[] = {
    {CommandId::SortNumerically, Sort<SortMethod::Numeric>},
    {CommandId::SortAlphabetically, Sort<SortMethod::Alphabetical>},
    {CommandId::SortByTimestamp, Sort<SortMethod::Timestamp>},
    {CommandId::SortByFileType, Sort<SortMethod::FileType>},
    {CommandId::CustomOrder, Sort<SortMethod::Custom>},
    {CommandId::ReverseSortOrder, Reverse},
    {CommandId::MoveTaggedToStart, MoveTaggedToStart},
    {CommandId::SaveCustomOrder, SaveOrder},
    {CommandId::SaveCustomOrderAs, SaveOrderAs},
    {CommandId::LoadCustomOrder, LoadOrder},
};

}  // namespace

std::span<const HandlerRow> OrderHandlers() { return kHandlers; }

}  // namespace ml::app
