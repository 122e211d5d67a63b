// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Steps of which all take effect or none. */
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "log.hpp"

namespace bmc::manager {

/* Undoes its steps in reverse order unless it is committed. */
class Transaction {
public:
    Transaction() = default;
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    ~Transaction()
    {
        rollBack();
    }

    /* Notes how to undo a step that has just taken effect. */
    void undoWith(std::function<void()> undo)
    {
        undos_.push_back(std::move(undo));
    }

    void commit()
    {
        undos_.clear();
    }

    /* A step that cannot be undone is logged; the others are undone all the same. */
    void rollBack() noexcept
    {
        for (; !undos_.empty(); undos_.pop_back()) {
            try {
                undos_.back()();
            } catch (const std::exception &error) {
                log(Level::error, std::string("cannot undo: ") + error.what());
            }
        }
    }

private:
    std::vector<std::function<void()>> undos_;
};

} // namespace bmc::manager
