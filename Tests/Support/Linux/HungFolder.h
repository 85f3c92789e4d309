#pragma once

#include "Platform/FileHandle.h"

#include <fcntl.h>
#include <linux/fuse.h>
#include <sys/mount.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>

namespace TestSupport {

/// A file system with one file, mounted over an empty folder, that answers nobody at first.
class HungFolder {
public:
    static constexpr const char* fileName = "hung.plist";

    explicit HungFolder(std::filesystem::path folder)
        : folder_(std::move(folder)) {
        const auto options = "fd=" + std::to_string(device_.fileDescriptor()) +
                             ",rootmode=40000,user_id=0,group_id=0";
        isHung_ =
            mount("hung", folder_.c_str(), "fuse", MS_NOSUID | MS_NODEV, options.c_str()) == 0;
    }

    ~HungFolder() {
        if (isHung_)
            umount2(folder_.c_str(), MNT_FORCE | MNT_DETACH);
        if (server_.joinable())
            server_.join();
    }

    HungFolder(const HungFolder&) = delete;
    HungFolder& operator=(const HungFolder&) = delete;
    HungFolder(HungFolder&&) = delete;
    HungFolder& operator=(HungFolder&&) = delete;

    /// False without the right to mount.
    bool isHung() const { return isHung_; }

    void answer() {
        server_ = std::thread([this] { serve(); });
    }

private:
    static constexpr std::uint64_t fileNode = FUSE_ROOT_ID + 1;

    void serve() {
        alignas(fuse_in_header) std::array<char, std::size_t{256} * 1024> request{};
        while (read(device_.fileDescriptor(), request.data(), request.size()) > 0) {
            fuse_in_header header{};
            std::memcpy(&header, request.data(), sizeof header);
            answer(header, request.data() + sizeof header);
        }
    }

    void answer(const fuse_in_header& request, const char* arguments) {
        switch (request.opcode) {
        case FUSE_INIT: {
            fuse_init_out kernel{};
            kernel.major = FUSE_KERNEL_VERSION;
            kernel.minor = FUSE_KERNEL_MINOR_VERSION;
            kernel.max_write = 4096;
            return send(request, bytesOf(kernel));
        }
        case FUSE_LOOKUP: {
            fuse_entry_out entry{};
            entry.nodeid = fileNode;
            entry.attr = attributes(fileNode);
            const bool isThere = hasFile_ && std::strcmp(arguments, fileName) == 0;
            return isThere ? send(request, bytesOf(entry)) : send(request, "", ENOENT);
        }
        case FUSE_GETATTR: {
            fuse_attr_out attributes{};
            attributes.attr = HungFolder::attributes(request.nodeid);
            return send(request, bytesOf(attributes));
        }
        case FUSE_OPEN:
        case FUSE_OPENDIR:
            return send(request, bytesOf(fuse_open_out{}));
        case FUSE_READDIR: {
            fuse_read_in place{};
            std::memcpy(&place, arguments, sizeof place);
            return send(request, hasFile_ && place.offset == 0 ? entry() : "");
        }
        case FUSE_FORGET:
            return;
        default: // what is read is empty
            hasFile_ = hasFile_ && request.opcode != FUSE_UNLINK;
            return send(request, "");
        }
    }

    static fuse_attr attributes(std::uint64_t node) {
        fuse_attr attributes{};
        attributes.ino = node;
        attributes.mode = node == fileNode ? S_IFREG | 0644U : S_IFDIR | 0755U;
        attributes.nlink = 1;
        return attributes;
    }

    static std::string entry() {
        fuse_dirent head{};
        head.ino = fileNode;
        head.off = 1;
        head.namelen = static_cast<std::uint32_t>(std::strlen(fileName));
        head.type = S_IFREG >> 12U;
        auto entry = bytesOf(head).substr(0, FUSE_NAME_OFFSET) + fileName;
        entry.resize(FUSE_DIRENT_ALIGN(entry.size()));
        return entry;
    }

    template <class Value>
    static std::string bytesOf(const Value& value) {
        return {reinterpret_cast<const char*>(&value), sizeof value};
    }

    void send(const fuse_in_header& request, const std::string& content, int error = 0) {
        fuse_out_header header{};
        header.len = static_cast<std::uint32_t>(sizeof header + content.size());
        header.error = -error;
        header.unique = request.unique;
        const auto whole = bytesOf(header) + content;
        // It fails where the one who asked has gone.
        [[maybe_unused]] const auto written =
            write(device_.fileDescriptor(), whole.data(), whole.size());
    }

    const std::filesystem::path folder_;
    const Platform::FileHandle device_{open("/dev/fuse", O_RDWR | O_CLOEXEC)};
    bool isHung_ = false;
    std::atomic<bool> hasFile_ = true;
    std::thread server_;
};

} // namespace TestSupport
