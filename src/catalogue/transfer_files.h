#pragma once

#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "imagefiles/companion_finder.h"
#include "platform/edit_batch.h"
#include "platform/file_system.h"
#include "platform/interaction.h"
#include "platform/trash.h"

/// Images copied and moved to other directories, each with its companions.
namespace ml::catalogue {

enum class TransferKind { Copy, Move };

/// What such a command works with. Owns nothing.
struct TransferTools {
  imagefiles::CompanionFinder& companions;
  platform::Trash& trash;  ///< takes what is overwritten
  platform::Interaction& ask;
  std::stop_token stop = {};
  platform::EditBatch* batch = nullptr;  ///< told of every step; null if it is not kept for undo
  platform::FileSystem& fileSystem = platform::RealFileSystem();
  std::string stateDirectory = platform::userStateDir();
};

/// Copies or moves images, one call each, and remembers what the user said of all files that are in the way.
class FileTransfer {
 public:
  /// `directory` exists.
  FileTransfer(TransferKind kind, std::string directory, const TransferTools& tools);

  /// Copies or moves the image with its companions; where something is in the way it asks first. An image that is
  /// skipped leaves its companions where they are; one that gets another name gives that to its companions. What is
  /// overwritten goes to the trash. A link is moved itself; from one file system to another, or by a copy, goes what it
  /// leads to. Gives the new paths, the image first; empty if it was skipped or is gone. Throws UserError or Cancelled:
  /// the image and its companions are then where they were, unless the sentence says otherwise.
  std::vector<std::string> Transfer(const std::string& path);
  /// What Transfer() would give, asking as it does and changing nothing. The directory need not exist.
  std::vector<std::string> Preview(const std::string& path);

 private:
  struct Step {
    std::string from, to;
  };
  enum class Way { Free, Replace, Skip };

  /// May change `to` to another name in the same directory.
  Way Clear(const std::string& from, std::string& to);
  std::vector<Step> Plan(const std::vector<std::string>& files);
  static std::vector<std::string> Targets(const std::vector<Step>& steps);
  void Move(const std::vector<Step>& steps);
  void Copy(const std::vector<Step>& steps);
  void RemoveSources(const std::vector<Step>& steps);

  const TransferKind kind_;
  const std::string directory_;
  const TransferTools tools_;
  std::optional<platform::FileExistsAnswer> standing_;
};

/// The directory that the user's text names, made if it is missing and the user wants it. Nothing if the answer is no.
/// Throws UserError for a file, for `current` itself, and if it cannot be made.
std::optional<std::string> TransferDirectory(const std::string& typed, const std::string& current,
                                             platform::Interaction& ask);

}  // namespace ml::catalogue
