#include "catalogue/ui/directory_model.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "catalogue/ui/directory_reader.h"
#include "platform/data_folders.h"
#include "platform/paths.h"
#include "platform/ui/mounted_volumes.h"
#include "platform/ui/qt_text.h"
#include "platform/ui/symbolic_icon.h"

namespace ml::catalogue::ui {

enum class Listing { Unknown, Asked, Known };

struct DirectoryModel::Node {
  Node* parent = nullptr;
  std::string path, label;
  QIcon icon;
  bool mayBeExpanded = true;
  Listing listing = Listing::Unknown;
  std::vector<std::unique_ptr<Node>> children;

  std::string_view Name() const { return platform::FileName(path); }
  int Row() const {
    const auto& siblings = parent->children;
    return static_cast<int>(std::ranges::find(siblings, this, &std::unique_ptr<Node>::get) - siblings.begin());
  }
};

std::vector<DirectoryRoot> DefaultRoots() {
  std::vector<DirectoryRoot> roots{{platform::normaliseDirectory(platform::homeDir()), "Home", "home"},
                                   {"/", "Computer", "drive"}};
  for (const auto& volume : platform::ui::MountedVolumes()) {
    if (volume.path != roots[0].path) roots.push_back({volume.path, volume.label, "drive"});
  }
  return roots;
}

DirectoryModel::DirectoryModel(QObject* parent)
    : QAbstractItemModel(parent),
      top_(std::make_unique<Node>()),
      folderIcon_(platform::ui::SymbolicIcon(QStringLiteral("folder"))),
      reader_(new DirectoryReader(this)) {
  top_->listing = Listing::Known;
  connect(reader_, &DirectoryReader::listed, this, &DirectoryModel::Take);
}

DirectoryModel::~DirectoryModel() = default;

void DirectoryModel::SetRoots(const std::vector<DirectoryRoot>& roots) {
  auto& nodes = top_->children;
  const auto isRoot = [&](const Node& node) {
    return std::ranges::find(roots, node.path, &DirectoryRoot::path) != roots.end();
  };
  for (int row = static_cast<int>(nodes.size()) - 1; row >= 0; --row) {
    if (isRoot(*nodes[static_cast<std::size_t>(row)])) continue;
    beginRemoveRows({}, row, row);
    nodes.erase(nodes.begin() + row);
    endRemoveRows();
  }
  // What stays stands in the same order as before.
  for (std::size_t i = 0; i < roots.size(); ++i) {
    const int row = static_cast<int>(i);
    if (i >= nodes.size() || nodes[i]->path != roots[i].path) {
      auto node = std::make_unique<Node>();
      node->parent = top_.get();
      node->path = roots[i].path;
      beginInsertRows({}, row, row);
      nodes.insert(nodes.begin() + row, std::move(node));
      endInsertRows();
    }
    nodes[i]->label = roots[i].label;
    nodes[i]->icon = platform::ui::SymbolicIcon(QString::fromStdString(roots[i].icon));
    Q_EMIT dataChanged(index(row, 0), index(row, 0));
  }
}

void DirectoryModel::SetShowHidden(bool show) {
  if (show == showHidden_) return;
  showHidden_ = show;
  beginResetModel();
  for (auto& root : top_->children) {
    root->children.clear();
    root->listing = Listing::Unknown;
    root->mayBeExpanded = true;
  }
  endResetModel();
}

std::string DirectoryModel::Path(const QModelIndex& index) const {
  return index.isValid() ? NodeOf(index)->path : std::string();
}

bool DirectoryModel::IsListed(const QModelIndex& index) const { return NodeOf(index)->listing == Listing::Known; }

void DirectoryModel::Read(const QModelIndex& index) {
  auto& node = *NodeOf(index);
  if (node.listing == Listing::Asked || &node == top_.get()) return;
  if (node.listing == Listing::Unknown) node.listing = Listing::Asked;
  reader_->Read(node.path, showHidden_);
}

QModelIndex DirectoryModel::ChildNamed(const QModelIndex& parent, const std::string& name) {
  auto& node = *NodeOf(parent);
  const auto before = [](const auto& child, const std::string& wanted) {
    return platform::CompareNoCase(child->Name(), wanted) < 0;
  };
  const auto place = std::lower_bound(node.children.begin(), node.children.end(), name, before);
  if (place != node.children.end() && (*place)->Name() == name) return IndexOf(**place);
  const Subdirectory found{name};
  const int row = static_cast<int>(place - node.children.begin());
  Insert(node, row, {&found, 1});
  return index(row, 0, parent);
}

void DirectoryModel::Insert(Node& parent, int row, std::span<const Subdirectory> found) {
  std::vector<std::unique_ptr<Node>> nodes;
  for (const auto& subdirectory : found) {
    auto& child = *nodes.emplace_back(std::make_unique<Node>());
    child.parent = &parent;
    child.path = platform::JoinPath(parent.path, subdirectory.name);
    child.label = subdirectory.name;
    child.icon = folderIcon_;
    child.mayBeExpanded = subdirectory.mayBeExpanded;
  }
  beginInsertRows(IndexOf(parent), row, row + static_cast<int>(found.size()) - 1);
  parent.children.insert(parent.children.begin() + row, std::make_move_iterator(nodes.begin()),
                         std::make_move_iterator(nodes.end()));
  endInsertRows();
}

/// One directory may stand below several roots. All are found before the first is changed: a listing takes
/// rows away.
void DirectoryModel::Take(const std::string& directory, const std::vector<Subdirectory>& found) {
  std::vector<Node*> open{top_.get()}, asking;
  while (!open.empty()) {
    Node* node = open.back();
    open.pop_back();
    for (auto& child : node->children) open.push_back(child.get());
    if (node != top_.get() && node->path == directory && node->listing != Listing::Unknown) asking.push_back(node);
  }
  for (Node* node : asking) TakeInto(*node, found);
}

/// What is still there keeps its node: what was open stays open. Both sides are sorted alike.
void DirectoryModel::TakeInto(Node& node, const std::vector<Subdirectory>& found) {
  const auto before = [](std::string_view a, std::string_view b) { return platform::CompareNoCase(a, b) < 0; };
  const auto isFound = [&](std::string_view name) {
    return std::ranges::binary_search(found, name, before, &Subdirectory::name);
  };
  for (int row = static_cast<int>(node.children.size()) - 1; row >= 0; --row) {
    const auto at = node.children.begin() + row;
    if (isFound((*at)->Name())) continue;
    beginRemoveRows(IndexOf(node), row, row);
    node.children.erase(at);
    endRemoveRows();
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    std::size_t end = i;  // of a run of new ones
    const auto next = i < node.children.size() ? node.children[i]->Name() : std::string_view();
    while (end < found.size() && found[end].name != next) ++end;
    if (end > i) Insert(node, static_cast<int>(i), std::span(found).subspan(i, end - i));
    i = end;
    if (i < found.size()) node.children[i]->mayBeExpanded = found[i].mayBeExpanded;
  }
  node.listing = Listing::Known;
  // The arrows of rows that stayed are only looked at again with the layout.
  Q_EMIT layoutAboutToBeChanged();
  Q_EMIT layoutChanged();
  Q_EMIT listingChanged(IndexOf(node));
}

DirectoryModel::Node* DirectoryModel::NodeOf(const QModelIndex& index) const {
  return index.isValid() ? static_cast<Node*>(index.internalPointer()) : top_.get();
}

QModelIndex DirectoryModel::IndexOf(const Node& node) const {
  return &node == top_.get() ? QModelIndex() : createIndex(node.Row(), 0, &node);
}

QModelIndex DirectoryModel::index(int row, int column, const QModelIndex& parent) const {
  const auto& children = NodeOf(parent)->children;
  if (column != 0 || row < 0 || row >= static_cast<int>(children.size())) return {};
  return createIndex(row, 0, children[static_cast<std::size_t>(row)].get());
}

QModelIndex DirectoryModel::parent(const QModelIndex& child) const {
  return child.isValid() ? IndexOf(*NodeOf(child)->parent) : QModelIndex();
}

int DirectoryModel::rowCount(const QModelIndex& parent) const {
  return parent.column() > 0 ? 0 : static_cast<int>(NodeOf(parent)->children.size());
}

bool DirectoryModel::hasChildren(const QModelIndex& parent) const {
  const auto* node = NodeOf(parent);
  return node->listing == Listing::Known ? !node->children.empty() : node->mayBeExpanded;
}

bool DirectoryModel::canFetchMore(const QModelIndex& parent) const {
  return parent.isValid() && NodeOf(parent)->listing == Listing::Unknown;
}

void DirectoryModel::fetchMore(const QModelIndex& parent) { Read(parent); }

QVariant DirectoryModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto& node = *NodeOf(index);
  switch (role) {
    case Qt::DisplayRole:
      return platform::ui::ToLabel(node.label);
    case Qt::DecorationRole:
      return node.icon;
    case Qt::ToolTipRole:
      return platform::ui::PlainToolTip(platform::ui::ToLabel(node.path));
    default:
      return {};
  }
}

}  // namespace ml::catalogue::ui
