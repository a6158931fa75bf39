#include "platform/WholeFile.h"

#include <fstream>
#include <optional>
#include <string>
#include <system_error>

#include "platform/FileName.h"

namespace loader {

namespace {

// Where the file lies when it is a symbolic link: the link stays, its file is replaced. Nothing for links in
// a circle.
std::optional<std::filesystem::path> FileBehindLinks(std::filesystem::path file) {
  constexpr int MostLinks = 40;
  std::error_code error;
  for (int links = 0; links <= MostLinks; ++links) {
    if (!std::filesystem::is_symlink(file, error)) {
      return file;
    }
    const std::filesystem::path next = std::filesystem::read_symlink(file, error);
    if (error) {
      return std::nullopt;
    }
    file = file.parent_path() / next; // an absolute one replaces the folder
  }
  return std::nullopt;
}

// A new file in the place of a pipe or a device would take it away; opening a pipe that nobody reads would
// not return. A file that was made read-only stays as it is: a new one in its place would go past that.
Replacement Obstacle(const std::filesystem::path& file) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    return Replacement::Done;
  }
  if (status.type() != std::filesystem::file_type::regular) {
    return Replacement::NoFile;
  }
  const bool writable = !IsMadeReadOnly(status) && std::ofstream(file, std::ios::app).is_open();
  return writable ? Replacement::Done : Replacement::ReadOnly;
}

// The name under which the new file is written; nothing where every name is taken.
std::optional<std::filesystem::path> NameBeside(const std::filesystem::path& file, Neighbours neighbours) {
  constexpr int MostNames = 100;
  for (int number = 0; number < MostNames; ++number) {
    std::filesystem::path beside = file;
    beside += number == 0 ? ".new" : ".new" + std::to_string(number);
    std::error_code error;
    const bool free = !std::filesystem::exists(std::filesystem::symlink_status(beside, error));
    if (free || neighbours == Neighbours::OfThisProgram) {
      return beside;
    }
  }
  return std::nullopt;
}

// False leaves nothing of the write behind.
bool WriteBytes(const std::filesystem::path& file, std::string_view bytes) {
  std::error_code error;
  const std::filesystem::file_status there = std::filesystem::symlink_status(file, error);
  if (std::filesystem::exists(there) && !std::filesystem::is_regular_file(there)) {
    return false;
  }
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out.is_open()) {
    return false; // whatever stands there is not of this write
  }
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close(); // the last bytes go to the disk here, and may not fit
  if (!out) {
    std::filesystem::remove(file, error);
    return false;
  }
  return true;
}

enum class Proof { None, ReadBack };

Replacement Replace(const std::filesystem::path& file, std::string_view bytes, Neighbours neighbours,
                    Proof proof) {
  if (!IsFileName(file)) {
    return Replacement::NoName;
  }
  const std::optional<std::filesystem::path> target = FileBehindLinks(file);
  if (!target) {
    return Replacement::NoFile;
  }
  if (const Replacement obstacle = Obstacle(*target); obstacle != Replacement::Done) {
    return obstacle;
  }
  const std::optional<std::filesystem::path> beside = NameBeside(*target, neighbours);
  if (!beside) {
    return Replacement::NoNameBeside;
  }
  if (!WriteBytes(*beside, bytes)) {
    return Replacement::NotWritten;
  }
  std::error_code error;
  const auto giveUp = [&](Replacement reason) {
    std::error_code ignored;
    std::filesystem::remove(*beside, ignored);
    return reason;
  };
  if (proof == Proof::ReadBack && !FileHolds(*beside, bytes)) {
    return giveUp(Replacement::NotReadBack);
  }
  const std::filesystem::file_status before = std::filesystem::status(*target, error);
  if (std::filesystem::exists(before)) {
    std::filesystem::permissions(*beside, before.permissions(), error);
  }
  std::filesystem::rename(*beside, *target, error);
  return error ? giveUp(Replacement::NotPutInPlace) : Replacement::Done;
}

} // namespace

bool IsMadeReadOnly(const std::filesystem::file_status& file) {
  using std::filesystem::perms;
  constexpr perms Writers = perms::owner_write | perms::group_write | perms::others_write;
  return (file.permissions() & Writers) == perms::none;
}

bool FileHolds(const std::filesystem::path& file, std::string_view bytes) {
  std::ifstream in(file, std::ios::binary);
  if (!in.is_open()) {
    return false;
  }
  std::string held(bytes.size() + 1, '\0'); // one more than there may be
  in.read(held.data(), static_cast<std::streamsize>(held.size()));
  return !in.bad() && std::string_view(held).substr(0, static_cast<std::size_t>(in.gcount())) == bytes;
}

bool ReplaceFile(const std::filesystem::path& file, std::string_view bytes, Neighbours neighbours) {
  return Replace(file, bytes, neighbours, Proof::None) == Replacement::Done;
}

Replacement ReplaceFileProved(const std::filesystem::path& file, std::string_view bytes,
                              Neighbours neighbours) {
  return Replace(file, bytes, neighbours, Proof::ReadBack);
}

} // namespace loader
