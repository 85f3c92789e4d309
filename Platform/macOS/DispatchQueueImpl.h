#pragma once

#include "Platform/DispatchQueue.h"

#include <dispatch/dispatch.h>

namespace Platform {

class DispatchQueue::Impl {
public:
    explicit Impl(dispatch_queue_t queue);

    dispatch_queue_t queue() const { return queue_; }

    const std::string& label() const { return label_; }

private:
    const dispatch_queue_t queue_;
    const std::string label_;
};

} // namespace Platform
