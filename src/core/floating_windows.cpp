#include "core/floating_windows.h"

#include <cstddef>

namespace quorvanta {

namespace {

using enum Occasion;

constexpr FloatingRow WindowRows[] = {
    {FloatingWindow::Options, {NewChoice, Switched, Emptied, NoneOpen}, ""},
    {FloatingWindow::Parameters, {NewChoice, Switched, Emptied, Closed}, ""},
    {FloatingWindow::InterimParameters, {NewChoice, Switched, Emptied, Closed}, ""},
    {FloatingWindow::SequentialMonitor, {NewChoice, NotASequence, Closed}, ""},
    {FloatingWindow::Grid, {NewChoice, Emptied, NoneOpen}, ""},
    {FloatingWindow::Summary, {NewChoice, ResultGone, Closed}, "Summary"},
    {FloatingWindow::DistrGraph, {NewChoice, ResultGone, Closed}, "Distribution Graph"},
    {FloatingWindow::Output, {NewChoice, ResultGone, Closed}, ""},
};

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < std::size(WindowRows); ++i)
        if (WindowRows[i].Window != static_cast<FloatingWindow>(i))
            return false;
    return true;
}
static_assert(IsInOrder());

} // namespace

std::span<const FloatingRow> FloatingWindows() {
    return WindowRows;
}

bool ShowsResult(FloatingWindow window) {
    return WindowRows[static_cast<std::size_t>(window)].GoesAt.Has(ResultGone);
}

void HideWindows(Occasion occasion) {
    for (const FloatingRow& row : WindowRows)
        if (row.GoesAt.Has(occasion))
            ThePlatform().Hide(row.Window);
}

} // namespace quorvanta
