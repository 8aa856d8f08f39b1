#include "catalogue/thumbnail_thread.h"

#include <algorithm>
#include <utility>

#include "platform/thread_priority.h"

namespace ml::catalogue {

namespace {

/// Lowest priority: whatever the user does goes before.
constexpr int kWorkerNice = 10;

}  // namespace

CThumbnailThread::CThumbnailThread(ImageList& list, ThumbnailMaker maker, std::function<void(int)> ready, int threads)
    : list_(list), maker_(std::move(maker)), ready_(std::move(ready)) {
  for (int i = 0; i < std::max(threads, 1); ++i) {
    threads_.emplace_back([this](const std::stop_token& stop) { Run(stop); });
  }
}

CThumbnailThread::~CThumbnailThread() {
  Pause();
  for (auto& thread : threads_) thread.request_stop();
}

void CThumbnailThread::Pause() {
  std::unique_lock guard(lock_);
  paused_ = true;
  idle_.wait(guard, [this] { return inProgress_ == 0; });
}

void CThumbnailThread::Resume() {
  {
    const std::lock_guard guard(lock_);
    paused_ = false;
  }
  wake_.notify_all();
}

void CThumbnailThread::Run(const std::stop_token& stop) {
  platform::SetThreadNice(kWorkerNice);
  std::unique_lock guard(lock_);
  while (!stop.stop_requested()) {
    const int index = NextToDo();
    if (index < 0) {
      wake_.wait(guard, stop, [this] { return NextToDo() >= 0; });
      continue;
    }
    entries_[static_cast<std::size_t>(index)]->claimed = true;
    cursor_ = static_cast<std::size_t>(index) + 1;
    ++inProgress_;
    guard.unlock();
    Work(index);
    guard.lock();
    if (--inProgress_ == 0) idle_.notify_all();
  }
}

/// The next entry that nobody works on, from the cursor on and then from the top; -1 if there is none, or
/// none may be begun. Needs the lock.
int CThumbnailThread::NextToDo() const {
  if (paused_ || givesWay_) return -1;
  const auto count = entries_.size();
  const auto start = cursor_ < count ? cursor_ : 0;
  for (std::size_t n = 0; n < count; ++n) {
    const auto index = start + n < count ? start + n : start + n - count;
    if (!entries_[index]->claimed) return static_cast<int>(index);
  }
  return -1;
}

void CThumbnailThread::Work(int index) {
  auto& entry = *entries_[static_cast<std::size_t>(index)];
  entry.item = std::make_unique<ImageItem>(maker_(list_.files[static_cast<std::size_t>(index)], size_));
  const auto state = entry.item->pixels.Empty() ? ThumbnailState::Failed : ThumbnailState::Done;
  entry.state.store(state, std::memory_order_release);
  finished_.fetch_add(1, std::memory_order_relaxed);
  ready_(index);
}

void CThumbnailThread::SetThumbnailSize(int size) {
  if (size == size_) return;
  const platform::PauseGuard pause(*this);
  size_ = size;
  Rebuild();
}

void CThumbnailThread::SetMaker(ThumbnailMaker maker) {
  const platform::PauseGuard pause(*this);
  maker_ = std::move(maker);
  Rebuild();
}

void CThumbnailThread::LoadList(std::vector<std::string> paths) {
  const platform::PauseGuard pause(*this);
  list_.Assign(std::move(paths));
  Rebuild();
}

void CThumbnailThread::Rebuild() {
  Entries fresh(list_.files.size());
  for (auto& entry : fresh) entry = std::make_unique<Entry>();
  const std::lock_guard guard(lock_);
  entries_ = std::move(fresh);
  finished_ = 0;
  cursor_ = 0;
}

void CThumbnailThread::Reorder(const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  const platform::PauseGuard pause(*this);
  Follow(list_.Reorder(paths));
}

void CThumbnailThread::MoveSelectedTo(int position) {
  const platform::PauseGuard pause(*this);
  Follow(list_.MoveSelectedTo(position));
}

/// The records take the order of their entries; whatever has no pixels is to be tried (again).
void CThumbnailThread::Follow(const std::vector<int>& oldIndices) {
  Entries moved;
  moved.reserve(oldIndices.size());
  int finished = 0;
  for (const int old : oldIndices) {
    auto& entry = moved.emplace_back(std::move(entries_[static_cast<std::size_t>(old)]));
    const bool done = entry->state == ThumbnailState::Done;
    finished += done ? 1 : 0;
    entry->claimed = done;
    if (!done) entry->state = ThumbnailState::ToDo;
  }
  const std::lock_guard guard(lock_);
  entries_ = std::move(moved);
  finished_ = finished;
  cursor_ = 0;
}

void CThumbnailThread::RemoveEntries(const std::vector<int>& indices) {
  const platform::PauseGuard pause(*this);
  {
    const std::lock_guard guard(lock_);
    for (auto index = indices.rbegin(); index != indices.rend(); ++index) {
      if (!list_.ValidIndex(*index)) continue;
      if (State(*index) != ThumbnailState::ToDo) --finished_;
      entries_.erase(entries_.begin() + *index);
    }
  }
  list_.Remove(indices);
}

void CThumbnailThread::InvalidateEntries(const std::vector<int>& indices) {
  const platform::PauseGuard pause(*this);
  const std::lock_guard guard(lock_);
  for (const int index : indices) {
    if (!list_.ValidIndex(index)) continue;
    auto& entry = *entries_[static_cast<std::size_t>(index)];
    if (entry.state != ThumbnailState::ToDo) --finished_;
    entry.state = ThumbnailState::ToDo;
    entry.claimed = false;
  }
}

std::vector<std::string> CThumbnailThread::RenameFiles(const std::vector<std::string>& sources,
                                                       const std::vector<std::string>& destinations, CaseMode caseMode,
                                                       const RenameTools& tools, const RenameRunner& run) {
  Pause();
  // The list is searched once for all: a batch has thousands of names.
  std::unordered_map<std::string, std::string> oldNames;
  auto noting = tools;
  noting.renamed = [&](const std::string& from, const std::string& to) {
    auto known = oldNames.extract(from);
    oldNames[to] = known ? known.mapped() : from;
    if (tools.renamed) tools.renamed(from, to);
  };
  try {
    std::vector<std::string> newPaths;
    const auto work = [&] { newPaths = catalogue::RenameFiles(sources, destinations, caseMode, noting); };
    run ? run(noting, work) : work();
    FollowNames(oldNames);
    return newPaths;
  } catch (...) {
    FollowNames(oldNames);
    throw;
  }
}

/// The entries follow their files, which have new names now.
void CThumbnailThread::FollowNames(const std::unordered_map<std::string, std::string>& oldNames) {
  std::unordered_map<std::string, std::string> names;
  for (const auto& [to, from] : oldNames) names.emplace(from, to);
  list_.Rename(names);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (State(static_cast<int>(i)) != ThumbnailState::ToDo) entries_[i]->item->path = list_.files[i];
  }
}

std::string CThumbnailThread::RenameOne(const std::string& source, const std::string& destination, CaseMode caseMode,
                                        const RenameTools& tools) {
  return catalogue::RenameOne(source, destination, caseMode, Following(tools));
}

/// The same tools, with the entry following.
RenameTools CThumbnailThread::Following(const RenameTools& tools) {
  auto following = tools;
  following.renamed = [this, &tools](const std::string& from, const std::string& to) {
    const int index = list_.IndexOfPath(from);
    if (State(index) != ThumbnailState::ToDo) entries_[static_cast<std::size_t>(index)]->item->path = to;
    list_.Rename(from, to);
    if (tools.renamed) tools.renamed(from, to);
  };
  return following;
}

void CThumbnailThread::JumpTo(int index) {
  const std::lock_guard guard(lock_);
  cursor_ = static_cast<std::size_t>(std::max(index, 0));
}

void CThumbnailThread::GiveWay() {
  const std::lock_guard guard(lock_);
  givesWay_ = true;
}

void CThumbnailThread::GoOn() {
  {
    const std::lock_guard guard(lock_);
    givesWay_ = false;
  }
  wake_.notify_all();
}

ThumbnailState CThumbnailThread::State(int index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= entries_.size()) return ThumbnailState::ToDo;
  return entries_[static_cast<std::size_t>(index)]->state.load(std::memory_order_acquire);
}

const ImageItem* CThumbnailThread::Item(int index) const {
  return State(index) == ThumbnailState::ToDo ? nullptr : entries_[static_cast<std::size_t>(index)]->item.get();
}

}  // namespace ml::catalogue
