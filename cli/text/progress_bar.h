/// A progress line on a terminal.
#ifndef MCBIN_CLI_TEXT_PROGRESS_BAR_H
#define MCBIN_CLI_TEXT_PROGRESS_BAR_H

#include <chrono>
#include <cstddef>
#include <string>

namespace mcbin {

/// One line on standard error that is drawn again ten times a second at most: what is being done,
/// how far, the rate and the time left. Draws nothing when standard error is no terminal.
class ProgressBar {
 public:
  ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();

  /// `share` is the part done, 0 to 1, negative when not known; `count` things called `unit` are
  /// done. The rate and the time left are reckoned from the first update with this `task`.
  void Update(const std::string& task, double share, double count, const char* unit);

  /// Wipes the line, so that other text can be written.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  bool enabled_;
  bool drawn_ = false;
  std::string task_;
  Clock::time_point taskStart_;
  Clock::time_point lastDraw_;
  double startShare_ = 0.0;
  double startCount_ = 0.0;
};

/// The line itself: "reading cases  [######----]  60%  412000 cases/s  3 s left". A part that is
/// not known yet (negative) is left out.
std::string progressLine(const std::string& task, double share, double rate, const char* unit,
                         double secondsLeft, std::size_t width);

}  // namespace mcbin

#endif
