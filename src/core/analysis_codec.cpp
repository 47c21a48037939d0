#include "core/analysis_codec.h"

#include "core/codepage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <type_traits>

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
        (*this)(static_cast<std::uint16_t>(encoded.size()));
        bytes_ += encoded;
    }

    std::size_t TextBytes() const { return textBytes_; }
    const std::string& Bytes() const { return bytes_; }

  private:
    std::string bytes_;
    std::size_t textBytes_ = 0;
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
        std::uint16_t length = 0;
        (*this)(length);
        text = FromWindows1252(Take(length));
    }

    bool HasFailed() const { return failed_; }

  private:
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
    file.resize(AnalysisFileBytes, '\0');
    return file;
}

std::optional<AnalysisRecord> DecodeAnalysis(std::string_view file) {
    Reader reader(file.substr(0, AnalysisFileBytes));
    AnalysisRecord record;
    WalkFields(record, reader);
    if (reader.HasFailed())
        return std::nullopt;
    return record;
}

} // namespace quorvanta
