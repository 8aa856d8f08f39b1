#include "app/jobs/transfer_job.h"

#include <algorithm>
#include <optional>
#include <set>

#include "app/file_messages.h"
#include "app/marrowlantern_view.h"
#include "app/session.h"
#include "catalogue/job_names.h"
#include "imagefiles/format_table.h"
#include "platform/errors.h"
#include "platform/paths.h"
#include "platform/read_directory.h"

namespace ml::app {
namespace {

using catalogue::TransferKind;

/// A companion among the files goes with its image, not once more by itself.
std::vector<std::string> ImagesAmong(const std::vector<std::string>& files, imagefiles::CompanionFinder& companions) {
  std::vector<std::string> images;
  std::set<std::string> covered;
  for (const auto& file : files) {
    if (imagefiles::FindFormat(file) == nullptr || !platform::IsRegularFile(file)) continue;
    images.push_back(file);
    for (auto& companion : companions.Find(file).Paths()) {
      if (companion != file) covered.insert(std::move(companion));
    }
  }
  std::erase_if(images, [&](const auto& image) { return covered.contains(image); });
  return images;
}

}  // namespace

void RunRemoving(CommandContext& context, const ImageJob& job) {
  const auto top = context.view.TopPath();
  const auto settle = [&] {
    context.session.RemoveMissing(job.paths);
    context.view.ScrollToTop(top);
    context.view.RefreshTree();
  };
  try {
    RunImageJob(context, job);
  } catch (...) {
    settle();
    throw;
  }
  settle();
}

void RunTransfer(CommandContext& context, TransferKind kind, const std::string& directory,
                 const std::vector<std::string>& paths) {
  const bool move = kind == TransferKind::Move;
  auto& session = context.session;
  imagefiles::CompanionFinder companions(session.ImageOptions());
  std::optional<catalogue::FileTransfer> transfer;
  RunRemoving(context, {.title = std::string(move ? catalogue::kMoveJob : catalogue::kCopyJob),
                        .progressVerb = move ? "Moving" : "Copying",
                        .paths = paths,
                        .act = [&](const std::string& path, const ImageJobTools& tools) {
                          if (!transfer) {
                            transfer.emplace(kind, directory,
                                             catalogue::TransferTools{.companions = companions,
                                                                      .trash = session.Journal().Bin(),
                                                                      .ask = tools.host.ask,
                                                                      .stop = tools.stop,
                                                                      .batch = &tools.batch});
                          }
                          transfer->Transfer(path);
                        }});
}

void TransferDropped(CommandContext& context, TransferKind kind, const std::string& directory,
                     const std::vector<std::string>& files) {
  auto& session = context.session;
  imagefiles::CompanionFinder companions(session.ImageOptions());
  const auto images = ImagesAmong(files, companions);
  if (images.empty()) throw platform::UserError(std::string(kNoImagesDropped));
  const std::string from(platform::DirectoryOf(images.front()));
  if (!catalogue::TransferDirectory(directory, from, session.Ask())) return;
  const bool onShow = platform::SameFile(directory, session.Images().Directory());
  const auto refresh = [&] {
    if (onShow) session.Images().RefreshDirectory();
  };
  try {
    RunTransfer(context, kind, directory, images);
  } catch (...) {
    refresh();
    throw;
  }
  refresh();
}

}  // namespace ml::app
