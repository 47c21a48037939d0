// What a typed text is read as, where that is not what it seems to say, and what a pasted text
// becomes. The reading itself is ReadNumber's.
#pragma once

#include <string>
#include <string_view>

namespace quorvanta {

// "15,420 is read as 15.42": for a text that is no plain number (digits with one decimal point or
// comma, a minus before them, blanks around), and for one whose comma seems to set thousands
// apart. Empty for any other text and for one that stands for no value.
std::string ReadingNote(std::string_view text);

// The same for numbers set apart by blanks: of the first that has a note.
std::string ReadingNoteOfList(std::string_view text);

// The first note among the texts of the window in front; empty if it has none.
std::string CurrentReadingNote();

// A text as it goes into a value box.
struct PastedText {
    std::string Text;
    std::string Note; // what was left out; empty if nothing was
};

// The first line of the text that is not blank, without the blanks around it. Any kind of blank
// is a blank, any dash that stands for a minus is one; what a value box does not allow is left out.
PastedText FromPasted(std::string_view text);

// The same; the status line tells what was left out.
std::string TakePasted(std::string_view text);

} // namespace quorvanta
