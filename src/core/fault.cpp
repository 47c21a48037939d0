#include "core/fault.h"

#if defined(__SSE2__)
#include <immintrin.h>
#else
#include <cfenv>
#endif

namespace quorvanta {

namespace {

#if defined(__SSE2__)
// All arithmetic is done in SSE registers, and reading their status word is a few cycles, where
// the portable calls also save and restore the x87 unit.
constexpr unsigned InvalidFlag = _MM_EXCEPT_INVALID;
constexpr unsigned DivisionByZeroFlag = _MM_EXCEPT_DIV_ZERO;
constexpr unsigned OverflowFlag = _MM_EXCEPT_OVERFLOW;

unsigned Flags() {
    return _mm_getcsr() & (InvalidFlag | DivisionByZeroFlag | OverflowFlag);
}

void RaiseFlags(unsigned flags) {
    _mm_setcsr(_mm_getcsr() | flags);
}
#else
constexpr unsigned InvalidFlag = FE_INVALID;
constexpr unsigned DivisionByZeroFlag = FE_DIVBYZERO;
constexpr unsigned OverflowFlag = FE_OVERFLOW;

unsigned Flags() {
    return static_cast<unsigned>(std::fetestexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW));
}

void RaiseFlags(unsigned flags) {
    std::feraiseexcept(static_cast<int>(flags));
}
#endif

} // namespace

const char* FaultName(Fault fault) {
    switch (fault) {
    case Fault::Overflow:
        return "Overflow";
    case Fault::DivisionByZero:
        return "Division by zero";
    case Fault::InvalidArgument:
        return "Invalid argument";
    case Fault::BadIndex:
        return "Index out of range";
    }
    return "Unknown fault";
}

void ClearFloatFaults() {
#if defined(__SSE2__)
    _mm_setcsr(_mm_getcsr() & ~static_cast<unsigned>(_MM_EXCEPT_MASK));
#else
    std::feclearexcept(FE_ALL_EXCEPT);
#endif
}

FloatFaultsApart::FloatFaultsApart() : flags_(Flags()) {}

FloatFaultsApart::~FloatFaultsApart() {
    if (Flags() == flags_)
        return; // nearly always, and to write the status word takes as long as some draws
    ClearFloatFaults();
    RaiseFlags(flags_);
}

bool HasFloatFault() {
    return Flags() != 0;
}

void ThrowIfFloatFault() {
    const unsigned flags = Flags();
    if (flags == 0)
        return;
    ClearFloatFaults();
    if ((flags & DivisionByZeroFlag) != 0)
        throw RunTimeError(Fault::DivisionByZero);
    if ((flags & OverflowFlag) != 0)
        throw RunTimeError(Fault::Overflow);
    throw RunTimeError(Fault::InvalidArgument);
}

} // namespace quorvanta
