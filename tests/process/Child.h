// Child: a program that a test runs, talks to and waits for. For one test thread.

#pragma once

#include <sys/types.h>

#include <chrono>
#include <initializer_list>
#include <string>

class Child {
 public:
  explicit Child(std::initializer_list<std::string> aCommand);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  /// Waits for the child's line; @return false when it ends without one
  bool AwaitLine();
  /// Ends a wait of the child for a line.
  void Tell(const std::string& aLine = "go") const;
  /// Waits for the child's end, at most 30 s, after which it is killed. @return "exit 7", "signal 11",
  /// "hangs"
  std::string End();
  /// From the child's line to its end.
  std::chrono::milliseconds ExitTime() const { return m_ExitTime; }

 private:
  pid_t m_Process = -1;
  int m_iInput = -1, m_iOutput = -1;
  std::chrono::steady_clock::time_point m_Line;
  std::chrono::milliseconds m_ExitTime{};
};
