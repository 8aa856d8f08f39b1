#include "imagefiles/look_ahead.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "imagefiles/messages.h"

namespace ml::imagefiles {
namespace {

DisplayPicture MakeSafely(const LookAhead::Maker& maker, const std::string& path, const DisplayOptions& options) {
  DisplayPicture result;
  // Whatever is thrown here would end the program.
  try {
    return maker(path, options);
  } catch (const std::exception& error) {  // out of memory, for one
    result.failure = messages::UnableToRead(path, error.what());
  } catch (...) {
    result.failure = messages::UnableToRead(path, "The file is broken");
  }
  return result;
}

}  // namespace

LookAhead::LookAhead(Maker maker, Ready ready, int processors, std::size_t maxBytes)
    : maker_(std::move(maker)),
      ready_(std::move(ready)),
      processors_(static_cast<std::size_t>(std::max(processors, 1))),
      maxBytes_(maxBytes) {
  // One more, which finds work when neighbours keep the others busy and another picture is wanted.
  for (std::size_t i = 0; i < processors_ + 1; ++i) {
    threads_.emplace_back([this](const std::stop_token& stop) { Run(stop); });
  }
}

int LookAhead::UsualProcessors() { return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, 4); }

LookAhead::~LookAhead() {
  WantNothing();
  for (auto& thread : threads_) thread.request_stop();
}

LookAhead::Answer LookAhead::Want(PictureWish wish) {
  const auto identity = PictureIdentityOf(wish.path);
  Answer answer;
  {
    const std::lock_guard guard(lock_);
    TakeOptions(wish.options);
    hurried_ = given_ < lastWish_;
    answer.wish = ++lastWish_;
    answer.picture = FindKept(wish.path, identity);
    plan_.clear();
    plan_.push_back({wish.path, answer.wish, answer.picture != nullptr});
    for (auto& path : wish.neighbours) plan_.push_back({std::move(path)});
    if (answer.picture) {
      given_ = answer.wish;
    } else if (auto* job = FindRunning(wish.path)) {
      job->wish = answer.wish;
      plan_.front().begun = true;
    }
  }
  wake_.notify_all();
  return answer;
}

void LookAhead::WantNothing() {
  const std::lock_guard guard(lock_);
  plan_.clear();
  given_ = lastWish_;  // what is in progress is nobody's any more
}

void LookAhead::Forget(const std::string& path) {
  {
    const std::lock_guard guard(lock_);
    ForgetIf([&](const std::string& other) { return other == path; });
  }
  wake_.notify_all();
}

void LookAhead::ForgetAll() {
  {
    const std::lock_guard guard(lock_);
    ForgetIf([](const std::string&) { return true; });
  }
  wake_.notify_all();
}

/// Needs the lock. What is in progress is begun again, if it is still in the plan.
void LookAhead::ForgetIf(const std::function<bool(const std::string& path)>& concerns) {
  for (auto& job : running_) {
    if (job->over || job->stale || !concerns(job->path)) continue;
    job->stale = true;
    const auto item = std::ranges::find(plan_, job->path, &Item::path);
    if (item != plan_.end()) item->begun = false;
  }
  std::erase_if(kept_, [&](const Kept& kept) {
    if (!concerns(kept.path)) return false;
    keptBytes_ -= kept.picture->Bytes();
    return true;
  });
}

void LookAhead::Pause() {
  std::unique_lock guard(lock_);
  paused_ = true;
  idle_.wait(guard, [this] { return running_.empty(); });
}

void LookAhead::Resume() {
  {
    const std::lock_guard guard(lock_);
    paused_ = false;
  }
  wake_.notify_all();
}

std::size_t LookAhead::KeptBytes() const {
  const std::lock_guard guard(lock_);
  return keptBytes_;
}

void LookAhead::Run(const std::stop_token& stop) {
  std::unique_lock guard(lock_);
  while (!stop.stop_requested()) {
    auto* item = NextItem();
    if (item == nullptr) {
      wake_.wait(guard, stop, [this] { return NextItem() != nullptr; });
      continue;
    }
    const auto job = Begin(*item);
    guard.unlock();
    Work(*job);
    guard.lock();
    std::erase(running_, job);
    if (running_.empty()) idle_.notify_all();
    wake_.notify_all();  // a neighbour that stood back may start
  }
}

/// Needs the lock.
LookAhead::Item* LookAhead::NextItem() {
  if (paused_) return nullptr;
  for (auto& item : plan_) {
    if (item.wish == 0 && !NeighboursMayStart()) return nullptr;
    if (!item.begun && FindRunning(item.path) == nullptr) return &item;
  }
  return nullptr;
}

/// Needs the lock.
bool LookAhead::NeighboursMayStart() const {
  if (running_.size() >= processors_) return false;
  return hurried_ || std::ranges::none_of(running_, [this](const auto& job) {
           return job->wish == lastWish_ && !job->expected && !job->over;
         });
}

/// Needs the lock.
std::shared_ptr<LookAhead::Job> LookAhead::Begin(Item& item) {
  item.begun = true;
  Job job{
      .path = item.path, .options = options_, .wish = item.wish, .generation = generation_, .expected = item.wish == 0};
  return running_.emplace_back(std::make_shared<Job>(std::move(job)));
}

void LookAhead::Work(Job& job) {
  const auto identity = PictureIdentityOf(job.path);
  {
    const std::lock_guard guard(lock_);
    if (FindKept(job.path, identity) && job.wish == 0) {
      job.over = true;
      return;
    }
  }
  const auto picture = std::make_shared<const DisplayPicture>(MakeSafely(maker_, job.path, job.options));
  // A file that changed meanwhile may have given half of either.
  const bool same = identity && PictureIdentityOf(job.path) == identity;
  Finish(job, same ? identity : std::nullopt, picture);
}

void LookAhead::Finish(Job& job, const std::optional<PictureIdentity>& identity, const PicturePtr& picture) {
  std::uint64_t wish = 0;
  {
    const std::lock_guard guard(lock_);
    job.over = true;
    if (job.stale || job.generation != generation_) return;
    if (identity && picture->failure.empty()) Keep({job.path, *identity, picture, ++uses_});
    if (job.wish > given_) wish = given_ = job.wish;
  }
  if (wish != 0) ready_(wish, picture);
}

/// Needs the lock. A picture of another state of the file is dropped.
LookAhead::PicturePtr LookAhead::FindKept(const std::string& path, const std::optional<PictureIdentity>& identity) {
  const auto kept = std::ranges::find(kept_, path, &Kept::path);
  if (kept == kept_.end()) return nullptr;
  if (kept->identity == identity) {
    kept->lastUse = ++uses_;
    return kept->picture;
  }
  keptBytes_ -= kept->picture->Bytes();
  kept_.erase(kept);
  return nullptr;
}

/// Needs the lock. A job whose picture will be as good as a new one.
LookAhead::Job* LookAhead::FindRunning(const std::string& path) {
  for (const auto& job : running_) {
    if (job->path == path && job->generation == generation_ && !job->over && !job->stale) return job.get();
  }
  return nullptr;
}

/// Needs the lock.
void LookAhead::TakeOptions(const DisplayOptions& options) {
  if (options == options_) return;
  options_ = options;
  ++generation_;
  kept_.clear();
  keptBytes_ = 0;
}

/// Needs the lock.
void LookAhead::Keep(Kept kept) {
  std::erase_if(kept_, [&](const Kept& old) {
    if (old.path == kept.path) keptBytes_ -= old.picture->Bytes();
    return old.path == kept.path;
  });
  keptBytes_ += kept.picture->Bytes();
  kept_.push_back(std::move(kept));
  DropUntilItFits();
}

/// Needs the lock.
void LookAhead::DropUntilItFits() {
  while (keptBytes_ > maxBytes_) {
    const auto last = std::ranges::max_element(kept_, {}, [this](const Kept& kept) { return RankOf(kept); });
    keptBytes_ -= last->picture->Bytes();
    kept_.erase(last);
  }
}

/// The lower, the longer kept: first the plan in its order, then what was used last.
std::uint64_t LookAhead::RankOf(const Kept& kept) const {
  const auto place = std::ranges::find(plan_, kept.path, &Item::path);
  if (place != plan_.end()) return static_cast<std::uint64_t>(place - plan_.begin());
  return plan_.size() + uses_ - kept.lastUse;
}

}  // namespace ml::imagefiles
