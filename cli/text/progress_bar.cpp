#include "cli/text/progress_bar.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "cli/system/terminal.h"
#include "cli/text/messages.h"

namespace mcbin {
namespace {

constexpr std::chrono::milliseconds kRedrawInterval(100);
constexpr std::size_t kBarWidth = 24;

std::string barText(double share) {
  const auto filled = static_cast<std::size_t>(std::clamp(share, 0.0, 1.0) * kBarWidth);
  return "[" + std::string(filled, '#') + std::string(kBarWidth - filled, '-') + "]";
}

std::string durationText(double seconds) {
  const auto whole = static_cast<long>(std::ceil(seconds));
  if (whole < 60) return fmt::format("{} s", whole);
  if (whole < 3600) return fmt::format("{} min {:02} s", whole / 60, whole % 60);
  return fmt::format("{} h {:02} min", whole / 3600, whole / 60 % 60);
}

}  // namespace

ProgressBar::ProgressBar() : enabled_(errorIsTerminal() && !isQuiet()) {}

ProgressBar::~ProgressBar() { Clear(); }

void ProgressBar::Update(const std::string& task, double share, double count, const char* unit) {
  if (!enabled_) return;
  const Clock::time_point now = Clock::now();
  if (task != task_) {
    task_ = task;
    taskStart_ = lastDraw_ = now;
    startShare_ = share;
    startCount_ = count;
    return;
  }
  if (now - lastDraw_ < kRedrawInterval) return;
  lastDraw_ = now;
  const double elapsed = std::chrono::duration<double>(now - taskStart_).count();
  const double doneShare = share - startShare_;
  const double secondsLeft =
      share >= 0.0 && doneShare > 0.0 ? elapsed * (1.0 - share) / doneShare : -1.0;
  const std::string line = progressLine(task, share, (count - startCount_) / elapsed, unit,
                                        secondsLeft, terminalWidth() - 1);
  writeError("\r" + line + "\x1b[K");
  drawn_ = true;
}

void ProgressBar::Clear() {
  if (drawn_) writeError("\r\x1b[K");
  drawn_ = false;
}

std::string progressLine(const std::string& task, double share, double rate, const char* unit,
                         double secondsLeft, std::size_t width) {
  std::string line = task;
  if (share >= 0.0) line += fmt::format("  {} {:3.0f}%", barText(share), 100.0 * share);
  line += fmt::format("  {:.0f} {}/s", rate, unit);
  if (secondsLeft >= 0.0) line += "  " + durationText(secondsLeft) + " left";
  return line.substr(0, width);
}

}  // namespace mcbin
