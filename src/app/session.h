#pragma once

#include <functional>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "app/command_facts.h"
#include "app/run_memory.h"
#include "app/session_observer.h"
#include "app/view_mode.h"
#include "catalogue/catalogue.h"
#include "catalogue/image_list.h"
#include "catalogue/thumbnail_thread.h"
#include "imagefiles/histogram.h"
#include "imagefiles/image_file.h"
#include "platform/locale_text.h"
#include "platform/user_journal.h"
#include "rawconvert/raw_developer.h"
#include "settings/settings.h"

namespace ml::app {

/// What is known of the image on show.
struct CurrentImage {
  int width = 0, height = 0;  ///< of the bitmap on the screen; 0 if there is none
  imagefiles::Histogram histogram;
};

/// One run of the window program without its window: settings, catalogue, worker and the image on show.
/// Everything is called on the window's thread.
class Session final : private catalogue::CatalogueObserver {
 public:
  /// `thumbnailReady` is called on a worker thread. `ask` outlives the session.
  Session(settings::Settings settings, platform::Interaction& ask, std::function<void(int)> thumbnailReady);

  settings::Settings settings;
  catalogue::ImageList list;
  CurrentImage current;
  ViewMode mode = ViewMode::Thumbnails;
  RunMemory memory;
  const platform::LocaleText locale = platform::LocaleText::FromEnvironment();

  catalogue::CThumbnailThread& Worker() { return worker_; }
  const catalogue::CThumbnailThread& Worker() const { return worker_; }
  catalogue::Catalogue& Images() { return catalogue_; }
  const catalogue::Catalogue& Images() const { return catalogue_; }
  platform::Interaction& Ask() { return ask_; }

  /// At most one; null for none.
  void SetObserver(SessionObserver* observer) { observer_ = observer; }

  imagefiles::ImageFileOptions ImageOptions() const;
  /// The image that commands for one image act on; -1 if there is none.
  int TargetIndex() const { return TargetIndexOf(*this); }
  /// Of that image; null if there is none. Stays valid until the next call. Texts may spell out a field of it.
  metadata::ExifData* TargetData() const { return facts_.TargetData(*this); }
  /// Of the commands for several images: the selected ones in list order, in the main view the image on show.
  std::vector<std::string> TargetPaths() const;
  CommandState State() const;

  /// Edge length of the thumbnails before scaling, as the settings want it.
  int ThumbnailEdge() const;
  /// Pixels of the screen for each of a thumbnail's, at least 1. The thumbnails are made again if their size changes
  /// by it, or did in the settings.
  void SetThumbnailScale(double scale);
  /// All thumbnails are made again, as the settings want them now.
  void RemakeThumbnails();
  /// These files have other contents now: what is known of them is forgotten, their thumbnails are made again.
  void FilesChanged(const std::vector<std::string>& paths);
  /// Takes entries out whose files are gone; where the current one is among them, its neighbour is shown.
  void RemoveMissing(const std::vector<std::string>& paths);
  /// After an undo, also one that failed half-way: gives entries that it brought back, all but `listedBefore`, the tags
  /// with which they were taken out.
  void BringBackTags(const std::set<std::string>& listedBefore);
  /// Remembers how edits are taken back.
  platform::UserJournal& Journal() { return journal_; }
  /// What develops raw files; made when it is first asked for.
  rawconvert::RawDeveloper& Developer();
  /// Another one takes its place, for tests.
  void SetDeveloper(std::unique_ptr<rawconvert::RawDeveloper> developer);

  /// Shows what `paths` name, see CollectStartFiles; names that lead to nothing are told on standard error. False
  /// if nothing is left to show.
  bool Open(std::span<const std::string> paths);
  /// Saves tags and order as when the directory is left, and brings the settings up to date. The worker
  /// stands still afterwards. Throws UserError, with all else done, if tags or order should have been saved and were
  /// not; may be called again.
  void Leave();

 private:
  void DirectoryShown(const std::string& directory) override;
  void DirectoryVisited(const std::string& directory) override;
  void ListReplaced() override;
  void ListReordered() override;
  void ShowImage(int index) override;

  platform::Interaction& ask_;
  SessionObserver* observer_ = nullptr;
  platform::UserJournal journal_;
  std::unique_ptr<rawconvert::RawDeveloper> developer_;
  std::set<std::string> taggedAndGone_;
  mutable CommandFacts facts_;
  catalogue::CThumbnailThread worker_;
  catalogue::Catalogue catalogue_;
};

}  // namespace ml::app
