// ExitGate: keeps the component out of the graphics driver while the process exits. The driver's own exit
// handlers free what a frame uses. Any thread.

#pragma once

#ifdef _WIN32

/// The system ends all other threads before the driver's end begins.
class ExitGate {
 public:
  class Pass {
   public:
    Pass() noexcept {}
    explicit operator bool() const noexcept { return true; }
  };
  static bool IsClosed() noexcept { return false; }
  static void ParkForEver() noexcept {}
};

#else

/// The first exit handler of the component closes the gate and waits at most two seconds for the threads that
/// are inside. Nothing opens it again.
class ExitGate {
 public:
  /// One use of the driver, for the object's length: a draw thread's cycle, or a single call elsewhere.
  /// Uses nest: a thread inside may go on although the gate has been closed meanwhile.
  class Pass {
   public:
    Pass() noexcept;
    ~Pass();
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    /// False once the gate is closed: the driver must not be called.
    explicit operator bool() const noexcept { return m_bInside; }

   private:
    unsigned m_uProcess;  // a forked child does not count the pass that it inherits
    bool m_bInside = true;
  };

  /// Notes that the pass in progress has made something new in the driver.
  static void NoteNewWork() noexcept;
  /// Whether the process exits. Contexts then stay as they are.
  static bool IsClosed() noexcept;
  /// Keeps a draw thread where it touches nothing until the process is gone.
  [[noreturn]] static void ParkForEver() noexcept;
};

#endif
