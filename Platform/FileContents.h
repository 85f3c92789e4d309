#pragma once

#include "Platform/Expected.h"
#include "Platform/URL.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// Files as a whole. No call waits for what lies at the path: anything but a regular file (a link
/// counts as what it leads to) is a failure. Errors name the file. Callable on any thread.
namespace Platform::FileContents {

/// All bytes of the file; a failure also where it holds more than `largestSize` of them.
Expected<std::vector<std::byte>> read(const URL& file, std::size_t largestSize);

/// Writes in place, making the file where it is missing: after a failure it may hold a part of the
/// bytes.
std::optional<Error> write(const URL& file, std::span<const std::byte> bytes);

/// Makes room for a new content at the file's path; where it fails, the old one stays.
using MakeRoom = std::function<std::optional<Error>(const URL& file)>;

/// Who may use a file that was not there before: all whom the process lets, or the user alone.
enum class NewFile : std::uint8_t { asUsual, forUserAlone };

/// Has the file hold the bytes, or else, after any failure, the end of the process and the loss of
/// power among them, what it held before. The bytes are brought to the disk beside it, in a hidden
/// file (".Name.saving"), and take its place in one step; one process or thread at a time. The file
/// keeps its permissions, and one that may not be written is not replaced. A link stays, and leads
/// to the new content.
///
/// Only where the folder takes no other file, the bytes are written in place.
///
/// `makeRoom`, where there is one, is called with the file itself, links followed, right before its
/// content changes.
std::optional<Error> replace(const URL& file, std::span<const std::byte> bytes,
                             const MakeRoom& makeRoom = nullptr,
                             NewFile newFile = NewFile::asUsual);

/// Gives the file another name in its folder. False where there is something of that name.
Expected<bool> rename(const URL& file, const URL& newName);

/// Gives a file that was not understood another name in its folder, with the time in it, such as
/// "Notes (unreadable 2026-11-22 071530).plist". Returns what the user is to know about that, or an
/// empty text where there was no file.
Expected<std::string> setAside(const URL& file);

/// Whether there is surely nothing at the path, rather than something that cannot be reached now.
bool isMissing(const URL& file);

} // namespace Platform::FileContents
