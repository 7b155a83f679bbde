#include "toolkit/fit/parallel_passes.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "toolkit/fit/team_work.h"

namespace mcbin {
namespace {

/// How far one thread has come, and whether it is to go on.
class PassMonitor : public Monitor {
 public:
  explicit PassMonitor(const std::atomic<bool>& isAbandoned) : isAbandoned_(isAbandoned) {}

  void Update(const std::string& /*task*/, double /*share*/, double count,
              const char* unit) override {
    (unit == std::string("cases") ? cases_ : attributes_) = count;
  }
  bool StopRequested() override { return isAbandoned_; }
  void ThrowIfStopped() override {
    if (isAbandoned_) throw Abandoned();
  }

  double Cases() const { return cases_; }
  double Attributes() const { return attributes_; }

 private:
  const std::atomic<bool>& isAbandoned_;
  std::atomic<double> cases_ = 0.0;
  std::atomic<double> attributes_ = 0.0;
};

/// Some of the attributes, from a source of cases of its own.
struct Part {
  Part(CaseSource& cases, const FeedLayout& all, const std::atomic<bool>& isAbandoned)
      : source(cases), layout(all), monitor(isAbandoned) {
    layout.attributeColumns.clear();
  }

  CaseSource& source;
  FeedLayout layout;
  PassMonitor monitor;
  PassResult result;
};

class Team {
 public:
  Team(const PassSetting& setting, const FeedLayout& layout,
       const std::vector<CaseSource*>& sources)
      : setting_(setting), attributes_(layout.attributeColumns.size()) {
    for (CaseSource* source : sources) {
      parts_.push_back(std::make_unique<Part>(*source, layout, isAbandoned_));
    }
    for (std::size_t a = 0; a < attributes_; ++a) {
      PartOf(a).layout.attributeColumns.push_back(layout.attributeColumns[a]);
    }
  }

  PassResult Run(Monitor& monitor) {
    const auto work = [this](std::size_t member) {
      Part& part = *parts_[member];
      part.result = runPass(setting_, part.layout, part.source, part.monitor);
    };
    const auto watch = [this, &monitor] {
      monitor.ThrowIfStopped();
      Tell(monitor);
    };
    workTogether(parts_.size(), work, watch, isAbandoned_);
    Tell(monitor);
    return Joined();
  }

 private:
  Part& PartOf(std::size_t attribute) { return *parts_[attribute % parts_.size()]; }

  void Tell(Monitor& monitor) const {
    double cases = 0.0;
    double attributes = 0.0;
    for (const auto& part : parts_) {
      cases += part->monitor.Cases() / static_cast<double>(parts_.size());
      attributes += part->monitor.Attributes();
    }
    if (attributes == 0.0) {
      const auto rows = static_cast<double>(setting_.scan.rows);
      monitor.Update("reading cases", cases / std::max(rows, 1.0), cases, "cases");
    } else {
      monitor.Update("binning attributes", attributes / static_cast<double>(attributes_),
                     attributes, "attributes");
    }
  }

  PassResult Joined() {
    std::vector<AttributeModel> attributes;
    for (std::size_t a = 0; a < attributes_; ++a) {
      attributes.push_back(std::move(PartOf(a).result.model.attributes[a / parts_.size()]));
    }
    PassResult joined = std::move(parts_.front()->result);
    joined.model.attributes = std::move(attributes);
    for (std::size_t p = 1; p < parts_.size(); ++p) TakeIn(parts_[p]->result, joined);
    return joined;
  }

  void TakeIn(const PassResult& part, PassResult& joined) const {
    const auto counts = [](const Model& model) {
      const TargetModel target = model.target.value_or(TargetModel());
      return std::tuple(model.cases.read, model.cases.used, target.classWeights,
                        target.missingWeight, model.attributes.front().totalWeightWithMissing);
    };
    if (counts(part.model) != counts(joined.model)) failChanged(setting_);
    // A thread knows nothing of the columns that it does not read.
    std::erase_if(joined.neverMet,
                  [&part](const auto& note) { return !part.neverMet.contains(note.first); });
    joined.feedSeconds = std::max(joined.feedSeconds, part.feedSeconds);
  }

  const PassSetting& setting_;
  std::size_t attributes_;
  std::atomic<bool> isAbandoned_ = false;
  std::vector<std::unique_ptr<Part>> parts_;
};

}  // namespace

PassResult runPasses(const PassSetting& setting, const FeedLayout& layout, CaseSource& cases,
                     std::size_t jobs, const AnotherSource& another, Monitor& monitor) {
  std::vector<std::unique_ptr<CaseSource>> others;
  std::vector<CaseSource*> sources = {&cases};
  while (another && sources.size() < std::min(jobs, layout.attributeColumns.size())) {
    others.push_back(another());
    if (!others.back()) break;
    sources.push_back(others.back().get());
  }
  if (sources.size() == 1) return runPass(setting, layout, cases, monitor);
  return Team(setting, layout, sources).Run(monitor);
}

}  // namespace mcbin
