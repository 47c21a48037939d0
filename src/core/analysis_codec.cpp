#include "core/analysis_codec.h"

#include "core/codepage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <type_traits>
#include <vector>

namespace quorvanta {

namespace {

template <class T>
concept Number = std::is_arithmetic_v<T>;

// The bytes of a number as they stand in the file.
template <Number T>
using NumberBytes = std::array<char, sizeof(T)>;

template <class Bytes>
Bytes LittleEndian(Bytes bytes) {
    if constexpr (std::endian::native == std::endian::big)
        std::ranges::reverse(bytes);
    return bytes;
}

// What the texts in UTF-8 begin with.
constexpr std::string_view UnicodeMark = "UTF8";

bool IsUtf8(std::string_view text) {
    while (!text.empty())
        if (!TakeCharacter(text))
            return false;
    return true;
}

// Appends each field that it is handed.
class Writer {
  public:
    template <Number T>
    void operator()(const T& number) {
        const auto bytes = LittleEndian(std::bit_cast<NumberBytes<T>>(number));
        bytes_.append(bytes.data(), bytes.size());
    }

    void operator()(const std::string& text) {
        const std::string encoded = ToWindows1252(text);
        textBytes_ += encoded.size();
        AppendText(encoded);
        if (IsUtf8(text) && FromWindows1252(encoded) != text)
            unicodeTexts_.push_back({texts_, text});
        ++texts_;
    }

    // What follows the last field: the texts whose letters the code page lacks; nothing if none.
    std::string UnicodeTexts() const {
        if (unicodeTexts_.empty())
            return "";
        Writer tail;
        tail.bytes_ = UnicodeMark;
        tail(static_cast<std::uint16_t>(unicodeTexts_.size()));
        for (const auto& [place, text] : unicodeTexts_) {
            tail(place);
            tail.AppendText(text);
        }
        return tail.bytes_;
    }

    std::size_t TextBytes() const { return textBytes_; }
    const std::string& Bytes() const { return bytes_; }

  private:
    void AppendText(const std::string& encoded) {
        (*this)(static_cast<std::uint16_t>(encoded.size()));
        bytes_ += encoded;
    }

    struct UnicodeText {
        std::uint16_t Place;
        std::string Text;
    };

    std::string bytes_;
    std::size_t textBytes_ = 0;
    std::uint16_t texts_ = 0;
    std::vector<UnicodeText> unicodeTexts_;
};

// Fills each field that it is handed, until the bytes run out.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    template <Number T>
    void operator()(T& number) {
        NumberBytes<T> bytes{};
        std::ranges::copy(Take(bytes.size()), bytes.begin());
        number = std::bit_cast<T>(LittleEndian(bytes));
    }

    void operator()(std::string& text) {
        const std::string_view bytes = TakeText();
        text = FromWindows1252(bytes);
        texts_.push_back({&text, bytes});
    }

    bool HasFailed() const { return failed_; }

    // Gives the texts that follow the last field to those that they belong to; whatever else
    // stands there has no meaning.
    void TakeUnicodeTexts() {
        if (Take(UnicodeMark.size()) != UnicodeMark)
            return;
        std::uint16_t count = 0;
        (*this)(count);
        for (std::uint16_t i = 0; i < count && !failed_; ++i) {
            std::uint16_t place = 0;
            (*this)(place);
            const std::string_view text = TakeText();
            if (!failed_ && place < texts_.size() && IsUtf8(text) &&
                ToWindows1252(text) == texts_[place].Bytes)
                *texts_[place].Text = text;
        }
    }

  private:
    struct FieldText {
        std::string* Text;
        std::string_view Bytes;
    };

    std::string_view TakeText() {
        std::uint16_t length = 0;
        (*this)(length);
        return Take(length);
    }

    // The next bytes of that number; none when fewer are left.
    std::string_view Take(std::size_t length) {
        failed_ = failed_ || length > rest_.size();
        if (failed_)
            return {};
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return taken;
    }

    std::string_view rest_;
    bool failed_ = false;
    std::vector<FieldText> texts_; // read so far
};

// Hands every field to the archive, in the order of the file: the one place that knows the order.
template <class Record, class Archive>
void WalkFields(Record& record, Archive& archive) {
    const auto all = [&archive](auto&... fields) { (archive(fields), ...); };
    const auto each = [&archive](auto&... arrays) {
        const auto cells = [&archive](auto& array) {
            for (auto& cell : array.Raw())
                archive(cell);
        };
        (cells(arrays), ...);
    };
    all(record.WindowKind, record.WindowNo, record.AnalysisFileName, record.IsTest, record.TestNo,
        record.TestName, record.DistrNo, record.DistrName, record.ParListName, record.NoOfSamples,
        record.NoOfTails, record.LeftTail, record.ParListNo, record.ProcedureNo, record.NoOfInterim,
        record.NoOfIntPar);
    each(record.IntParList, record.IntParValue);
    all(record.NoOfCheck);
    each(record.CheckList, record.CheckValue);
    all(record.UnknownParNo, record.XParNo, record.ZParNo, record.XKind, record.ZKind,
        record.XminText, record.XmaxText, record.XstepText, record.ZValuesText, record.NoOfPar);
    each(record.ParKind, record.ParText);
    all(record.NoOfTitles);
    each(record.OutTitle, record.OutXAxis, record.OutYAxis);
    all(record.OutZLabel, record.OutFontName, record.OutFontSize, record.OutFontBold,
        record.OutCurveWidth, record.OutDecimals, record.HasGridData, record.NoOfGrids);
    each(record.GridRows, record.GridCols, record.GridTitle, record.GridHead, record.GridFlag,
         record.GridKind);
    all(record.GridName);
    for (int store = 1; store <= NumberStores; ++store)
        for (int row = 0; row <= GridStoreRows; ++row)
            for (int column = 0; column <= GridStoreColumns(store); ++column)
                archive(record.GridData(store)(row, column));
    each(record.GridTexts, record.InterimSize1Text, record.InterimSize2Text, record.RejectH0Text,
         record.AcceptH0Text);
    all(record.MaxNoOfSimText, record.SeedText);
    each(record.SignEstimateText, record.PowerEstimateText, record.PrAcceptEstimateText,
         record.SampleSizeEstimateText);
    all(record.IsGroupSeq, record.IsMultComp, record.SimDistrNo);
    each(record.SimDistrOption, record.SimDistrPar1, record.SimDistrPar2);
    all(record.DistrGraphStyle, record.HasDistrGraph, record.GridTestNo);
}

} // namespace

std::size_t TextBytes(const AnalysisRecord& record) {
    Writer writer;
    WalkFields(record, writer);
    return writer.TextBytes();
}

std::optional<std::string> EncodeAnalysis(const AnalysisRecord& record) {
    Writer writer;
    WalkFields(record, writer);
    if (writer.TextBytes() > MaxTextBytes)
        return std::nullopt;
    std::string file = writer.Bytes();
    if (const std::string unicode = writer.UnicodeTexts();
        file.size() + unicode.size() <= AnalysisFileBytes)
        file += unicode;
    file.resize(AnalysisFileBytes, '\0');
    return file;
}

bool KeepsAllLetters(const AnalysisRecord& record) {
    Writer writer;
    WalkFields(record, writer);
    return writer.Bytes().size() + writer.UnicodeTexts().size() <= AnalysisFileBytes;
}

std::optional<AnalysisRecord> DecodeAnalysis(std::string_view file) {
    Reader reader(file.substr(0, AnalysisFileBytes));
    AnalysisRecord record;
    WalkFields(record, reader);
    if (reader.HasFailed())
        return std::nullopt;
    reader.TakeUnicodeTexts();
    return record;
}

} // namespace quorvanta
