#include "core/typed_text.h"

#include "core/analysis_state.h"
#include "core/catalogue.h"
#include "core/codepage.h"
#include "core/gridtable.h"
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
        if (ValueCharacters.find(character) == std::string_view::npos)
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

std::string OnlyAllowed(std::string text) {
    while (const auto forbidden = FirstForbidden(text)) {
        ThePlatform().Beep();
        ShowMessage(*forbidden + "   Is Not Allowed. Must Be a Digit.");
        EraseAll(text, *forbidden);
    }
    return text;
}

std::string CheckTyped(const std::string& text, std::string* stored) {
    std::string clean = OnlyAllowed(text);
    if (stored != nullptr)
        *stored = clean;
    Calculated = False;
    if (CurrentWindowKind() == SimulationWindow) {
        ClearEstimates();
        ThePlatform().RefreshSimulation();
    }
    GetInfoEnabled(3) = false;
    GetInfoEnabled(4) = false;
    ThePlatform().RefreshMenus();
    MarkChanged();
    return clean;
}

std::string TypedParText(i16 parNo, const std::string& text) {
    const i16 kind = ParKind(parNo);
    const std::string clean = CheckTyped(text, &ParText(kind));
    if (HasGridData == True && IsGridKind(kind)) {
        DropGrids();
        HasDistrGraph = False;
        ParListName = Headline();
        UpdateMenus();
    }
    return clean;
}

} // namespace quorvanta
