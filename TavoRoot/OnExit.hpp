// Tavo::OnExit: runs a function when the scope ends, unless dismissed.
#pragma once

#include <functional>
#include <utility>

namespace Tavo {

class OnExit {
public:
    explicit OnExit(std::function<void()> action) : action(std::move(action)) {}
    OnExit(OnExit const&) = delete;
    OnExit& operator=(OnExit const&) = delete;
    ~OnExit() {
        if (active && action) {
            try {
                action();
            } catch (...) {
                // A scope guard runs during unwinding too; it must not throw.
            }
        }
    }
    void Dismiss() noexcept { active = false; }

private:
    std::function<void()> action;
    bool active = true;
};

} // namespace Tavo
