#include "Benchmarks/Measurement.h"
#include "Benchmarks/TreeBenchmarks.h"
#include "CorbelKit/Formats/FileItem.h"
#include "Tests/Support/Linux/ChildProcess.h"

#include <cstdio>
#include <optional>

namespace Benchmarks {
namespace {

using CorbelKit::FileItem;
using Platform::URL;

constexpr int rounds = 5;

FileItem treeOf(const std::filesystem::path& folder) {
    return *FileItem::make(URL::file(folder.string(), URL::DirectoryHint::isDirectory), true);
}

double countNodes(const FileItem& item) {
    double count = 1;
    for (std::size_t index = 0; index < item.childCount(); ++index)
        count += countNodes(item.child(index));
    return count;
}

} // namespace

bool measureFileItem(const std::filesystem::path& tree) {
    const auto before = privateBytes();
    const auto item = treeOf(tree);
    const auto bytes = static_cast<double>(privateBytes() - before);
    const auto nodes = countNodes(item);
    std::printf("  %.0f nodes, %.0f KB\n", nodes, bytes / 1024);
    const bool holds = report("Private memory of a node", bytes / nodes, 400, "B");

    const auto times = timeInTurns(
        {[&] { treeOf(tree); },
         [&] {
             TestSupport::ChildProcess({"sh", "-c", "find " + tree.string() + " >/dev/null; :"})
                 .readAll();
         }},
        rounds);
    std::printf("  tree %.1f ms, find %.1f ms\n", times[0].count() * 1e3, times[1].count() * 1e3);
    return report("Tree of files, against find", times[0] / times[1], 2) && holds;
}

} // namespace Benchmarks
