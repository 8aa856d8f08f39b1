#pragma once

#include <QAbstractItemModel>
#include <QIcon>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "catalogue/ui/subdirectories.h"

namespace ml::catalogue::ui {

class DirectoryReader;

/// A root of the tree.
struct DirectoryRoot {
  std::string path;   ///< without "/" at its end, but for "/" itself
  std::string label;  ///< bytes
  std::string icon;   ///< name of a drawing
};
/// Home, "/" and what is mounted now.
std::vector<DirectoryRoot> DefaultRoots();

/// Directories by their bytes, read in the background as they are asked for: a row appears once its parent
/// was listed.
class DirectoryModel final : public QAbstractItemModel {
  Q_OBJECT

 public:
  explicit DirectoryModel(QObject* parent);
  ~DirectoryModel() override;

  /// No path twice. Roots that stay stand in the same order and keep what is known and open below them.
  void SetRoots(const std::vector<DirectoryRoot>& roots);
  /// Forgets all listings if it changes.
  void SetShowHidden(bool show);

  /// Full path; empty for an invalid index.
  std::string Path(const QModelIndex& index) const;
  bool IsListed(const QModelIndex& index) const;
  /// Reads a directory, again if it was read before; listingChanged() follows.
  void Read(const QModelIndex& index);
  /// The row of `name` below `parent`; a directory that no listing showed (hidden, or just made) is inserted.
  QModelIndex ChildNamed(const QModelIndex& parent, const std::string& name);
  QModelIndex RootAt(int row) const { return index(row, 0); }

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& = {}) const override { return 1; }
  bool hasChildren(const QModelIndex& parent = {}) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;
  QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  void listingChanged(const QModelIndex& parent);

 private:
  struct Node;
  Node* NodeOf(const QModelIndex& index) const;
  QModelIndex IndexOf(const Node& node) const;
  void Take(const std::string& directory, const std::vector<Subdirectory>& found);
  void TakeInto(Node& node, const std::vector<Subdirectory>& found);
  void Insert(Node& parent, int row, std::span<const Subdirectory> found);

  std::unique_ptr<Node> top_;  ///< its children are the roots
  QIcon folderIcon_;
  DirectoryReader* reader_;
  bool showHidden_ = false;
};

}  // namespace ml::catalogue::ui
