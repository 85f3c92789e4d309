#pragma once

#include <asio/any_io_executor.hpp>

#include <cstddef>

namespace Platform {

/// The few threads that run every queue but the main one, wait for descriptors and keep timers.
/// They start with the first use and last as long as the process.
asio::any_io_executor workerExecutor();
std::size_t workerCount();

} // namespace Platform
