#pragma once

#include <exception>
#include <string>
#include <thread>

namespace Vell::FontEngine {

/// What an operation, which describes its result, came to: the description or the text of its exception.
template <class Operation>
std::string getOutcome(const Operation& operation) {
    try {
        return operation();
    } catch (const std::exception& error) {
        return error.what();
    }
}

/// The same on another thread, which waits for ever if a lock was left behind.
template <class Operation>
std::string getOutcomeElsewhere(const Operation& operation) {
    std::string outcome;
    std::thread([&] { outcome = getOutcome(operation); }).join();
    return outcome;
}

} // namespace Vell::FontEngine
