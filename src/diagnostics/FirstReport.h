// FirstReport: limits the log to one entry for a fault that occurs in every frame. Draw thread.

#pragma once

/// Returns whether the calling thread reports this fault for the first time. After 64 different reports of a
/// thread, returns false for every further one.
/// @param aOperation a string literal: addresses are compared, not texts
/// @param aCode a code that the caller chooses
bool IsFirstReport(const char* aOperation, unsigned aCode) noexcept;
