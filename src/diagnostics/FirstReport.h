// FirstReport: keeps a fault that comes in every frame from filling the log. Draw thread.

#pragma once

/// Whether the calling thread reports this for the first time. The operation is a literal, the code is the
/// caller's own. After 64 different reports of a thread nothing is new.
bool IsFirstReport(const char* aOperation, unsigned aCode) noexcept;
