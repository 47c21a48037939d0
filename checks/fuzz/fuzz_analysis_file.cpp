// Opens any bytes at all as an analysis file, with everything that opening leads to: the window,
// the rebuilt list of parameters, the run of a table or graph.
#include "core/analysis.h"
#include "core/analysis_codec.h"
#include "core/analysis_file.h"
#include "core/analysis_state.h"
#include "core/fault.h"
#include "core/records.h"
#include "support/scripted_platform.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace quorvanta;

void Require(bool condition) {
    if (!condition)
        std::abort();
}

// A file in memory, with a path by which the program opens it.
class MemoryFile {
  public:
    MemoryFile() : descriptor_(::memfd_create("input", 0)) { Require(descriptor_ >= 0); }

    void Hold(const std::uint8_t* bytes, std::size_t size) const {
        Require(::ftruncate(descriptor_, static_cast<off_t>(size)) == 0);
        Require(::pwrite(descriptor_, bytes, size, 0) == static_cast<ssize_t>(size));
    }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

ScriptedPlatform& ProgramPlatform() {
    static ScriptedPlatform platform;
    return platform;
}

// A run may have 75,000 points: a few of them are enough.
void StartProgram() {
    ScriptedPlatform& platform = ProgramPlatform();
    platform.ClockStep = 10;
    platform.OnDoEvents = [&platform] {
        if (platform.ProgressSteps >= 3)
            Cancelled = True;
    };
    Main();
}

void RequireUsableState() {
    Require(AnalysisNo == 1 && Analysis.HighBound() == 1);
    Require(NoOfPar >= 1 && NoOfPar <= MaxPar);
    Require(UnknownParNo >= 0 && UnknownParNo <= NoOfPar);
    Require(XParNo >= 0 && XParNo <= NoOfPar && XParNo != UnknownParNo);
    Require(ZParNo >= 0 && ZParNo <= NoOfPar + 1 && ZParNo != XParNo && ZParNo != UnknownParNo);
    for (i16 i = 0; i <= NoOfPar; ++i)
        Require(ParKind(i) >= 0 && ParKind(i) <= MaxKind);
    Require(Calculating == False && Cancelled == False);
    Require(AnalysisState(1).Changed == True);
    // What is open can be saved, and comes back as it was, but for letters without room.
    StoreAnalysis();
    const auto file = EncodeAnalysis(Analysis(1));
    Require(!file || !KeepsAllLetters(Analysis(1)) || DecodeAnalysis(*file) == Analysis(1));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    StartProgram();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const MemoryFile file;
    file.Hold(bytes, size);
    ScriptedPlatform& platform = ProgramPlatform();
    bool opened = false;
    try {
        opened = ReadAnalysisFile(file.Path());
        if (opened)
            RequireUsableState();
    } catch (const RunTimeError&) {
        // What a file leads to may fail at run time, like anything that the user types.
        opened = true;
    }
    if (!opened) {
        Require(AnalysisNo == 0 && platform.Children.empty() && platform.Messages.empty());
        return 0;
    }
    // The next input meets a program without a window. What it remembers of typed values is filled
    // anew only now and then, since that takes longer than all the rest.
    ChildClosed(AnalysisNo);
    Calculated = False;
    Cancelled = False;
    platform.Children.clear();
    platform.Messages.clear();
    static int openings = 0;
    constexpr int openingsPerStart = 1000;
    if (++openings % openingsPerStart == 0)
        StartProgram();
    return 0;
}
