// The free-standing windows, and when each of them goes: the one table that a new window enters.
#pragma once

#include "core/platform.h"

#include <initializer_list>
#include <span>
#include <string_view>

namespace quorvanta {

// What makes floating windows go.
enum class Occasion {
    NewChoice,    // another test or distribution is chosen
    Switched,     // another analysis becomes the current one
    NotASequence, // the current one is no group sequential design that is calculated
    Emptied,      // the current one is emptied
    ResultGone,   // its result is another analysis', or not of these values any more
    Closed,       // its window closes
    NoneOpen      // the last window closes
};

// A set of occasions.
class Occasions {
  public:
    constexpr Occasions(std::initializer_list<Occasion> occasions) {
        for (const Occasion occasion : occasions)
            set_ |= Bit(occasion);
    }
    constexpr bool Has(Occasion occasion) const { return (set_ & Bit(occasion)) != 0; }

  private:
    static constexpr unsigned Bit(Occasion occasion) {
        return 1U << static_cast<unsigned>(occasion);
    }

    unsigned set_ = 0;
};

struct FloatingRow {
    FloatingWindow Window;
    Occasions GoesAt;
    std::string_view Name; // in messages, while it is in front; empty: they name the child window
};

// Every floating window, in the order of FloatingWindow.
std::span<const FloatingRow> FloatingWindows();

// True for a window that shows the result, and so goes with it.
bool ShowsResult(FloatingWindow window);

// Hides the windows that go at this occasion.
void HideWindows(Occasion occasion);

} // namespace quorvanta
