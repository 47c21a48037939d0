#include "core/typed_text.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/codepage.h"
#include "core/grids.h"
#include "core/menus.h"
#include "core/platform.h"
#include "core/records.h"

#include <optional>
#include <string_view>

namespace quorvanta {

namespace {

std::optional<std::string> FirstForbidden(const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const std::size_t length = CharacterLength(text, i);
        const std::string character = text.substr(i, length);
        if (std::string_view("0123456789.-, ").find(character) == std::string_view::npos)
            return character;
        i += length;
    }
    return std::nullopt;
}

void EraseAll(std::string& text, const std::string& part) {
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
}

} // namespace

std::string CheckTyped(const std::string& text) {
    std::string clean = text;
    while (const auto forbidden = FirstForbidden(clean)) {
        ThePlatform().Beep();
        ShowMessage(*forbidden + "   Is Not Allowed. Must Be a Digit.");
        EraseAll(clean, *forbidden);
    }
    Calculated = False;
    GetInfoEnabled(3) = false;
    GetInfoEnabled(4) = false;
    ThePlatform().RefreshMenus();
    MarkChanged();
    return clean;
}

std::string TypedParText(i16 parNo, const std::string& text) {
    const std::string clean = CheckTyped(text);
    const i16 kind = ParKind(parNo);
    ParText(kind) = clean;
    if (HasGridData == True && IsGridKind(kind)) {
        HasGridData = False;
        HasDistrGraph = False;
        ParListName = Headline();
    }
    return clean;
}

} // namespace quorvanta
