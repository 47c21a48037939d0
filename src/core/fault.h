// Run-time faults: what ends an operation through the error dialog instead of giving a result.
#pragma once

#include <exception>

namespace quorvanta {

enum class Fault { Overflow, DivisionByZero, InvalidArgument, BadIndex };

// The fault's name as the error dialog shows it.
const char* FaultName(Fault fault);

// Thrown where a fault is found, caught in one place: around the handling of an event.
class RunTimeError : public std::exception {
  public:
    explicit RunTimeError(Fault kind) : kind_(kind) {}
    Fault Kind() const { return kind_; }
    const char* what() const noexcept override { return FaultName(kind_); }

  private:
    Fault kind_;
};

// Floating-point faults raise status flags of the processor and nothing else. They are cleared
// before a calculation and read once per evaluation of an equation or per simulated replicate.
void ClearFloatFaults();

// Throws a RunTimeError if an invalid operation, a division by zero or an overflow has happened
// since the last ClearFloatFaults.
void ThrowIfFloatFault();

// What happens while this lives leaves the flags as they were. Events that are let through in the
// middle of a calculation lay out and paint windows, which raises flags that are none of its own.
class FloatFaultsApart {
  public:
    FloatFaultsApart();
    ~FloatFaultsApart();
    FloatFaultsApart(const FloatFaultsApart&) = delete;
    FloatFaultsApart& operator=(const FloatFaultsApart&) = delete;

  private:
    unsigned flags_;
};

// True if such a fault has happened; the flags stay.
bool HasFloatFault();

} // namespace quorvanta
