// ExitGate: keeps the component from calling the graphics driver while the process exits. The driver's own
// exit handlers free objects that a frame uses. Any thread.

#pragma once

#ifdef _WIN32

/// Does nothing: Windows ends all other threads before the driver is shut down.
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

/// The component's first exit handler closes the gate. It waits at most two seconds for the threads inside.
/// The gate is never opened again.
class ExitGate {
 public:
  /// One use of the driver, for the lifetime of the object: a cycle of the draw thread, or a single call
  /// elsewhere. Uses nest: a thread that is inside may continue after the gate is closed.
  class Pass {
   public:
    Pass() noexcept;
    ~Pass();
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    /// Returns false once the gate is closed: the driver must not be called.
    explicit operator bool() const noexcept { return m_bInside; }

   private:
    unsigned m_uProcess;  // a forked child must not count the pass that it inherits
    bool m_bInside = true;
  };

  /// Records that the current pass has created an object in the driver.
  static void NoteNewWork() noexcept;
  /// Returns whether the process exits. Contexts are then left unchanged.
  static bool IsClosed() noexcept;
  /// Blocks a draw thread until the process ends, so that it touches nothing.
  [[noreturn]] static void ParkForEver() noexcept;
};

#endif
