#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "catalogue/image_list.h"
#include "catalogue/list_gate.h"
#include "catalogue/rename_files.h"
#include "imaging/pixel_buffer.h"

namespace ml::catalogue {

/// Thumbnail record of one entry, made by the worker.
struct ImageItem {
  imaging::PixelBuffer pixels;  ///< empty when the file could not be decoded; else as imagefiles::Thumbnail
  std::string path;
  std::string failure;  ///< why there are no pixels, a sentence
  bool hasSound = false;
  bool hasViewingJpeg = false;
};

enum class ThumbnailState : unsigned char { ToDo, Done, Failed };

/// What makes one thumbnail record; called on the worker's threads, several at once. Must not throw.
using ThumbnailMaker = std::function<ImageItem(const std::string& path, int size)>;

/// Does `work`, which goes by `tools`, on any thread and returns when it has ended; throws what it threw. May complete
/// the tools before.
using RenameRunner = std::function<void(RenameTools& tools, const std::function<void()>& work)>;

/// The background worker: makes a thumbnail for each entry of the catalogue and is the gate through which
/// the catalogue changes. All functions are called on the thread that owns the list; those marked gated
/// pause, change and resume themselves.
///
/// Its threads read `list.files`; they write only the record and the state of the entry they work on. A record
/// is published by its state (release), so the owner may read it without a lock once State() is not ToDo.
class CThumbnailThread final : public ListGate {
 public:
  /// `threads` decode at a time (at least 1). They stand still until the first Resume(), that is, the first
  /// list. `ready` is called on a worker thread after each finished entry and must only pass the index on.
  /// `list` belongs to the caller and outlives the worker.
  CThumbnailThread(ImageList& list, ThumbnailMaker maker, std::function<void(int index)> ready, int threads);
  /// Stops and joins.
  ~CThumbnailThread() override;
  CThumbnailThread(const CThumbnailThread&) = delete;
  CThumbnailThread& operator=(const CThumbnailThread&) = delete;

  void Pause() override;
  void Resume() override;

  /// Gated. Edge length in pixels; all thumbnails are made again if it changed.
  void SetThumbnailSize(int size);
  int ThumbnailSize() const { return size_; }
  /// Gated. All thumbnails are made again, by `maker` from now on.
  void SetMaker(ThumbnailMaker maker);
  /// Gated. The catalogue becomes `paths`, all thumbnails to do.
  void LoadList(std::vector<std::string> paths) override;
  /// Gated. See ImageList::Reorder; thumbnails travel along, failed ones are tried again. An empty `paths`
  /// does nothing.
  void Reorder(const std::vector<std::string>& paths) override;
  /// Gated. See ImageList::MoveSelectedTo; thumbnails travel along, failed ones are tried again. To the user
  /// this is a change of order: see Catalogue::MoveSelectedTo.
  void MoveSelectedTo(int position) override;
  /// Gated. `indices` ascend; bad ones are passed over.
  void RemoveEntries(const std::vector<int>& indices);
  /// Gated. The entries' thumbnails are made again.
  void InvalidateEntries(const std::vector<int>& indices);

  /// Pauses and does not resume, also when it throws: the caller reads the directory anew, which resumes. See
  /// catalogue::RenameFiles; the entries follow their files. The files are renamed by `run` if there is one, the
  /// entries always on this thread.
  std::vector<std::string> RenameFiles(const std::vector<std::string>& sources,
                                       const std::vector<std::string>& destinations, CaseMode caseMode,
                                       const RenameTools& tools, const RenameRunner& run = {});
  /// Does not pause: to be called in a pause. See catalogue::RenameOne; the entry follows its file.
  std::string RenameOne(const std::string& source, const std::string& destination, CaseMode caseMode,
                        const RenameTools& tools);

  /// Work goes on from `index`, usually the first visible item, and later starts over from the top. Needs no
  /// pause.
  void JumpTo(int index);

  /// From now on no thumbnail is begun, so that something more urgent has the processors; those in progress go on.
  /// Needs no pause, and is not ended by Resume().
  void GiveWay();
  void GoOn();

  /// ToDo for a bad index.
  ThumbnailState State(int index) const;
  /// The record of an entry whose state is not ToDo, else null. Valid until the next gated call.
  const ImageItem* Item(int index) const;
  /// How many entries are not ToDo.
  int FinishedCount() const { return finished_.load(std::memory_order_relaxed); }

 private:
  struct Entry {
    std::unique_ptr<ImageItem> item;
    std::atomic<ThumbnailState> state{ThumbnailState::ToDo};
    bool claimed = false;  ///< some thread works on it, or did; guarded by lock_
  };
  using Entries = std::vector<std::unique_ptr<Entry>>;

  void Run(const std::stop_token& stop);
  int NextToDo() const;
  void Work(int index);
  void Rebuild();
  RenameTools Following(const RenameTools& tools);
  void FollowNames(const std::unordered_map<std::string, std::string>& oldNames);
  void Follow(const std::vector<int>& oldIndices);

  ImageList& list_;
  ThumbnailMaker maker_;  ///< replaced only while nothing is in progress
  const std::function<void(int)> ready_;
  int size_ = 80;
  Entries entries_;  ///< parallel to list_.files
  std::atomic<int> finished_{0};

  std::mutex lock_;
  std::condition_variable_any wake_;  ///< something to do, or the end
  std::condition_variable idle_;      ///< nothing in progress
  bool paused_ = true;                ///< guarded by lock_, like the next three
  bool givesWay_ = false;
  int inProgress_ = 0;
  std::size_t cursor_ = 0;
  std::vector<std::jthread> threads_;  ///< last: they use all of the above
};

}  // namespace ml::catalogue
