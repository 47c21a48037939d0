#include "core/platform.h"

#include "core/fault.h"

namespace quorvanta {

namespace {

Platform* current = nullptr;

} // namespace

Platform& ThePlatform() {
    if (current == nullptr)
        throw RunTimeError(Fault::InvalidArgument);
    return *current;
}

void SetPlatform(Platform& platform) {
    current = &platform;
}

void ShowMessage(const std::string& text) {
    ThePlatform().MsgBox(text, Buttons::Ok, Icon::Exclamation, "");
}

} // namespace quorvanta
