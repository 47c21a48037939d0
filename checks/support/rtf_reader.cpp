#include "support/rtf_reader.h"

#include <cctype>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

namespace quorvanta::checks {

namespace {

struct Token {
    enum class Type { Open, Close, Word, Symbol, Text } Kind;
    std::string Value; // of a control word its letters
    bool HasNumber = false;
    int Number = 0;
};

bool IsLetter(char c) {
    return c >= 'a' && c <= 'z';
}

// As the Rich Text Format has it (version 1.9, 2008): a control word is letters, an optional
// number, and one blank that belongs to it; a control symbol is one character that is no letter.
// Fails on a byte that is not ASCII and on a brace left open.
std::vector<Token> Tokens(const std::string& rtf) {
    std::vector<Token> tokens;
    int depth = 0;
    for (std::size_t i = 0; i < rtf.size();) {
        const char c = rtf[i];
        EXPECT_LT(static_cast<unsigned char>(c), 0x80);
        if (c == '{' || c == '}') {
            depth += c == '{' ? 1 : -1;
            EXPECT_GE(depth, 0);
            tokens.push_back({c == '{' ? Token::Type::Open : Token::Type::Close, {c}});
            ++i;
        } else if (c == '\\' && i + 1 < rtf.size() && !IsLetter(rtf[i + 1])) {
            tokens.push_back({Token::Type::Symbol, {rtf[i + 1]}});
            i += 2;
        } else if (c == '\\') {
            Token token{Token::Type::Word, ""};
            for (++i; i < rtf.size() && IsLetter(rtf[i]); ++i)
                token.Value += rtf[i];
            std::string number;
            if (i < rtf.size() && rtf[i] == '-')
                number += rtf[i++];
            while (i < rtf.size() && std::isdigit(static_cast<unsigned char>(rtf[i])) != 0)
                number += rtf[i++];
            if (!number.empty()) {
                token.HasNumber = true;
                token.Number = std::stoi(number);
            }
            if (i < rtf.size() && rtf[i] == ' ')
                ++i;
            tokens.push_back(token);
        } else {
            if (tokens.empty() || tokens.back().Kind != Token::Type::Text)
                tokens.push_back({Token::Type::Text, ""});
            tokens.back().Value += c;
            ++i;
        }
    }
    EXPECT_EQ(depth, 0);
    return tokens;
}

} // namespace

namespace {

// Takes what belongs to a table; false for any other word.
class TableReader {
  public:
    bool Take(const Token& word, ShownRtf& shown) {
        if (word.Value == "trowd") {
            row_ = {};
            isInRow_ = true;
        } else if (word.Value == "cellx") {
            row_.Edges.push_back(word.Number);
        } else if (word.Value == "trhdr") {
            row_.IsHead = true;
        } else if (word.Value == "pard") {
            from_ = shown.Text.size();
            flushRight_ = false;
        } else if (word.Value == "qr") {
            flushRight_ = true;
        } else if (word.Value == "cell") {
            EXPECT_TRUE(isInRow_);
            row_.Cells.push_back(shown.Text.substr(from_));
            row_.FlushRight.push_back(flushRight_);
            shown.Text += u'\t';
        } else if (word.Value == "row") {
            EXPECT_EQ(row_.Cells.size(), row_.Edges.size());
            shown.Text.back() = u'\n';
            shown.Rows.push_back(row_);
            isInRow_ = false;
        } else {
            return word.Value == "trgaph" || word.Value == "trkeep" || word.Value == "clbrdrt" ||
                   word.Value == "clbrdrb" || word.Value == "brdrs" || word.Value == "brdrw" ||
                   word.Value == "intbl" || word.Value == "ql";
        }
        return true;
    }

    bool IsInRow() const { return isInRow_; }

  private:
    RtfRow row_;
    std::size_t from_ = 0;
    bool flushRight_ = false;
    bool isInRow_ = false;
};

} // namespace

ShownRtf Read(const std::string& rtf) {
    TableReader table;
    const std::vector<Token> tokens = Tokens(rtf);
    ShownRtf shown;
    int group = 0;
    int depth = 0;
    int skip = 0; // characters that stand for the Unicode one before them
    for (const Token& token : tokens) {
        if (token.Kind == Token::Type::Open) {
            ++depth;
            group += depth == 2 ? 1 : 0;
        } else if (token.Kind == Token::Type::Close) {
            --depth;
        }
        if (depth != 2 || group != 3) // the font table and the style sheet come first
            continue;
        if (token.Kind == Token::Type::Text) {
            for (const char c : token.Value) {
                if (skip > 0)
                    --skip;
                else
                    shown.Text += static_cast<char16_t>(c);
            }
        } else if (token.Kind == Token::Type::Symbol) {
            shown.Text += static_cast<char16_t>(token.Value[0]);
        } else if (token.Kind == Token::Type::Word) {
            if (table.Take(token, shown))
                continue;
            EXPECT_FALSE(token.Value == "par" && table.IsInRow());
            if (token.Value == "par")
                shown.Text += u'\n';
            else if (token.Value == "tab")
                shown.Text += u'\t';
            else if (token.Value == "b")
                shown.Bold = true;
            else if (token.Value == "fs")
                shown.FontSize = token.Number;
            else if (token.Value == "u") {
                shown.Text += static_cast<char16_t>(static_cast<std::uint16_t>(token.Number));
                skip = 1;
            } else
                EXPECT_TRUE(token.Value == "s" || token.Value == "f") << token.Value;
        }
    }
    return shown;
}

} // namespace quorvanta::checks
