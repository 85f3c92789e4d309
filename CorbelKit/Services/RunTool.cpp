#include "CorbelKit/Services/RunTool.h"

#include "CorbelKit/Services/Const.h"
#include "Platform/FileHandle.h"
#include "Platform/FileManager.h"
#include "Platform/StandardOutput.h"
#include "Platform/Subprocess.h"
#include "Platform/UTF8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

namespace CorbelKit {
namespace {

bool isShell(std::string_view path) {
    return path == Const::Command::sh || path == Const::Command::bash ||
           path == Const::Command::zsh;
}

std::optional<std::vector<std::string>> argumentList(const ToolArguments& arguments,
                                                     std::string_view executablePath) {
    if (const auto* list = std::get_if<std::vector<std::string>>(&arguments))
        return *list;
    if (const auto* text = std::get_if<std::string>(&arguments)) {
        if (isShell(executablePath))
            return std::vector<std::string>{"-c", *text};
        return std::vector<std::string>{*text};
    }
    return std::nullopt;
}

std::string readText(Platform::FileHandle& output) {
    std::string text;
    std::array<std::byte, 1024> chunk{};
    for (;;) {
        const auto count = output.read(chunk);
        if (!count) {
            Platform::StandardOutput::writeLine(count.error().description);
            return text;
        }
        if (*count == 0)
            return text;
        const std::string_view piece(reinterpret_cast<const char*>(chunk.data()), *count);
        if (Platform::UTF8::isWellFormed(piece))
            text += piece;
    }
}

} // namespace

std::string runTool(const ToolArguments& arguments, const std::string& executablePath,
                    SendNewline sendNewline,
                    const std::optional<std::map<std::string, std::string>>& environment) {
    const auto executable =
        Platform::URL::file(executablePath, Platform::URL::DirectoryHint::notDirectory);
    if (!Platform::FileManager::fileExists(executable))
        return executablePath + " does not exist";
    const auto list = argumentList(arguments, executablePath);
    auto output = Platform::Pipe::make();
    auto input = Platform::Pipe::make();
    if (!list || !output || !input)
        return {};

    const Platform::Subprocess task{
        .executableURL = executable,
        .arguments = *list,
        .environment = environment,
        .standardInput = input->fileHandleForReading.fileDescriptor(),
        .standardOutput = output->fileHandleForWriting.fileDescriptor(),
        .standardError = output->fileHandleForWriting.fileDescriptor(),
    };
    static_cast<void>(task.launch()); // without a process, the output ends at once
    static_cast<void>(output->fileHandleForWriting.close()); // or the end would never come
    if (sendNewline == SendNewline::yes) {
        // While our own reading end is open, the pipe takes the newline also from a process that
        // gets a signal for what nobody will read.
        static_cast<void>(
            input->fileHandleForWriting.write(std::as_bytes(std::span<const char>("\n", 1))));
        static_cast<void>(input->fileHandleForWriting.close());
    }
    static_cast<void>(input->fileHandleForReading.close());
    return readText(output->fileHandleForReading);
}

} // namespace CorbelKit
