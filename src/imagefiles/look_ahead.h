#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "imagefiles/display_picture.h"
#include "imagefiles/picture_identity.h"
#include "platform/worker_gate.h"

namespace ml::imagefiles {

/// What the display wants to show now, and what it will probably want next.
struct PictureWish {
  std::string path;
  std::vector<std::string> neighbours;  ///< the likeliest first
  DisplayOptions options;
};

/// Makes pictures for the display on threads of its own: the one that is wanted first, then its neighbours, so that
/// stepping on finds them ready. Finished pictures are kept, up to a number of bytes, as long as their files, those
/// beside them that pictures are taken from, and the options stay the same. It only reads files. All functions may be
/// called on any thread but its own.
///
/// While a picture is wanted that nobody expected, the neighbours wait, unless wishes come faster than pictures.
/// A wish replaces the one before. Neighbours of the old one that were not begun are dropped; a wanted picture already
/// begun is still given out, so that the display moves on even if wishes come faster than pictures.
class LookAhead final : public platform::WorkerGate {
 public:
  using PicturePtr = std::shared_ptr<const DisplayPicture>;
  using Maker = std::function<DisplayPicture(const std::string& path, const DisplayOptions& options)>;
  /// Called on a thread of the look-ahead, must only pass its arguments on. A number below one that was seen before
  /// is out of date.
  using Ready = std::function<void(std::uint64_t wish, PicturePtr picture)>;

  static constexpr std::size_t kMaxBytes = std::size_t{256} * 1024 * 1024;

  /// Those of the system up to four: with more, pictures that nobody may ever see would push each other out of memory.
  static int UsualProcessors();

  /// Decodes up to `processors` (at least 1) pictures at a time; a wanted one never waits for neighbours.
  LookAhead(Maker maker, Ready ready, int processors, std::size_t maxBytes = kMaxBytes);
  /// Waits for the pictures in progress.
  ~LookAhead() override;
  LookAhead(const LookAhead&) = delete;
  LookAhead& operator=(const LookAhead&) = delete;

  struct Answer {
    std::uint64_t wish = 0;  ///< its number, higher than any before
    PicturePtr picture;      ///< if it was there already; else it is given to Ready
  };
  Answer Want(PictureWish wish);
  /// Nothing is to be shown or made ready any more; what was made stays.
  void WantNothing();
  /// The next wish for `path` reads the file again.
  void Forget(const std::string& path);
  /// The same for all files.
  void ForgetAll();

  /// Returns only when no picture is in progress and none can start. Wishes wait for Resume().
  void Pause() override;
  void Resume() override;

  /// Of the pictures that are kept.
  std::size_t KeptBytes() const;

 private:
  struct Item {  ///< of the plan
    std::string path;
    std::uint64_t wish = 0;  ///< 0 for a neighbour
    bool begun = false;
  };
  struct Job {
    std::string path;
    DisplayOptions options;
    std::uint64_t wish = 0, generation = 0;
    bool expected = false;  ///< begun as a neighbour
    bool over = false;      ///< whoever wants the picture now comes too late
    bool stale = false;     ///< the file may have changed since it was begun
  };
  struct Kept {
    std::string path;
    PictureIdentity identity;
    PicturePtr picture;
    std::uint64_t lastUse = 0;
  };

  void Run(const std::stop_token& stop);
  Item* NextItem();
  bool NeighboursMayStart() const;
  std::shared_ptr<Job> Begin(Item& item);
  void Work(Job& job);
  void Finish(Job& job, const std::optional<PictureIdentity>& identity, const PicturePtr& picture);
  PicturePtr FindKept(const std::string& path, const std::optional<PictureIdentity>& identity);
  Job* FindRunning(const std::string& path);
  void ForgetIf(const std::function<bool(const std::string& path)>& concerns);
  void TakeOptions(const DisplayOptions& options);
  void Keep(Kept kept);
  void DropUntilItFits();
  std::uint64_t RankOf(const Kept& kept) const;

  const Maker maker_;
  const Ready ready_;
  const std::size_t processors_, maxBytes_;

  mutable std::mutex lock_;           ///< guards all below
  std::condition_variable_any wake_;  ///< something to do, or the end
  std::condition_variable idle_;      ///< nothing in progress
  bool paused_ = false;
  DisplayOptions options_;
  std::uint64_t generation_ = 0;  ///< of the options
  std::uint64_t lastWish_ = 0, given_ = 0, uses_ = 0;
  bool hurried_ = false;    ///< the last wish came before the picture of the one before
  std::vector<Item> plan_;  ///< the wanted picture first
  std::vector<std::shared_ptr<Job>> running_;
  std::vector<Kept> kept_;
  std::size_t keptBytes_ = 0;
  std::vector<std::jthread> threads_;  ///< last: they use all of the above
};

}  // namespace ml::imagefiles
