#pragma once

#include <exception>
#include <string>
#include <thread>

namespace Vell::FontEngine {

/// Runs an operation that describes its result. Returns the description or the text of its exception.
template <class Operation>
std::string getOutcome(const Operation& operation) {
    try {
        return operation();
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// Does the same on another thread, which waits for ever if a lock is still held.
template <class Operation>
std::string getOutcomeOnAnotherThread(const Operation& operation) {
    std::string outcome;
    std::thread([&] { outcome = getOutcome(operation); }).join();
    return outcome;
}

} // namespace Vell::FontEngine
