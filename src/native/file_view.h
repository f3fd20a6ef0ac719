#pragma once
// The bytes of a whole file for reading. Large data files are mapped rather than copied, so that
// the planes are copied once, from the page cache into the record (a fresh buffer of the file's
// size costs five times as much: every page of it is faulted in and cleared first). A file cut
// short by another program while it is being read would end the read with a bus error; the
// program's own writer never shortens a file in place: it writes a new one.
#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

namespace velk::native {

class FileView {
 public:
  // Empty when the file cannot be read.
  static FileView Open(const std::filesystem::path& file);
  FileView() = default;
  FileView(FileView&& other) noexcept;
  FileView& operator=(FileView&& other) noexcept;
  FileView(const FileView&) = delete;
  FileView& operator=(const FileView&) = delete;
  ~FileView();

  bool valid() const { return valid_; }
  std::span<const std::uint8_t> bytes() const { return bytes_; }

 private:
  bool valid_ = false;
  std::span<const std::uint8_t> bytes_;
  void* mapping_ = nullptr;
  std::size_t mappedSize_ = 0;
  std::vector<std::uint8_t> copy_;  // where mapping is not available
};

}  // namespace velk::native
