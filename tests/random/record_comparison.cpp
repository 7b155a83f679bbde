#include "random/record_comparison.h"

#include "random/agreement.h"

namespace mcbinning_tests {

namespace {

using plain_model::AttributeRecord;
using plain_model::error;
using plain_model::PairRecord;

template <typename LibraryRecord, typename ModelRecord>
void compareShared(const LibraryRecord& library, const ModelRecord& model) {
  compareStatuses("status", library.GetStatus(), model.status);
  compare("attribute", library.GetAttributeIndex(), model.attribute);
  compare("cut points", library.GetCutPoints(), model.cutPoints);
  compare("cell counts", library.GetCellCounts(), model.cellCounts);
  model.CompareNumbers(library, [](const char* what, const auto& number, const auto& expected) {
    compare(what, number, expected);
  });
}

template <typename LibraryRecord, typename Output, typename ModelRecord>
void compareAll(const Output& output, const std::vector<ModelRecord>& model) {
  std::vector<LibraryRecord> records(1);  // replaced, or left alone
  compareStatuses("all cut points", output.GetAllCutPoints(records),
                  model.empty() ? error(120020) : plain_model::Status());
  compare("number of records", records.size(), model.empty() ? 1 : model.size());
  for (std::size_t i = 0; i < model.size(); ++i) {
    within("record", i, [&] { compareRecords(records[i], model[i]); });
  }
}

void queryPair(const BINOutput& output, const std::vector<PairRecord>& model, int attribute,
               int target) {
  BINAttributeTargetResults found;
  const auto status = output.GetAttributeTargetCutPoints(attribute, target, found);
  if (attribute >= 0 && target >= 0 && attribute != target) {
    for (const PairRecord& first : model) {
      if (first.attribute == attribute && first.target == target) {
        compareStatuses("query of a pair", status, first.status);
        return compareRecords(found, first);
      }
    }
  }
  compareStatuses("refused query of a pair", status, error(120013));
  compareRecords(found, PairRecord());
}

void queryAttribute(const BINOutput& output, const std::vector<PairRecord>& model, int attribute) {
  std::vector<BINAttributeTargetResults> found(1);
  const auto status = output.GetAttributeCutPoints(attribute, found);
  plain_model::Status expected = error(120013);
  std::size_t next = 1;
  for (const PairRecord& record : model) {
    if (attribute >= 0 && record.attribute == attribute) {
      check(next < found.size(), "every record of an attribute");
      compareRecords(found[next++], record);
      expected = record.status;
    }
  }
  compare("records of an attribute", found.size(), next);
  compareStatuses("query of an attribute", status, expected);
}

void queryAttribute(const EFBINOutput& output, const std::vector<AttributeRecord>& model,
                    int attribute) {
  BINAttributeResults found;
  const auto status = output.GetAttributeCutPoints(attribute, found);
  for (const AttributeRecord& first : model) {
    if (attribute >= 0 && first.attribute == attribute) {
      compareStatuses("query of an attribute", status, first.status);
      return compareRecords(found, first);
    }
  }
  compareStatuses("refused query of an attribute", status, error(120013));
  compareRecords(found, AttributeRecord());
}

}  // namespace

void compareStatuses(const char* what, const MCBinning::MCStatus& library,
                     const plain_model::Status& model) {
  compare(what, library.GetErrorCode(), long{model.code});
  compare(what, library.IsOK() ? 0 : (library.IsError() ? -1 : 1), model.severity);
  for (unsigned i = 0; i < 3; ++i) {
    compare(what, library.GetDiscreteDatum(i), long{model.discrete[i]});
    compare(what, library.GetScaleDatum(i), model.scale[i]);
  }
}

void compareRecords(const BINAttributeTargetResults& library, const PairRecord& model) {
  compareShared(library, model);
  compare("target", library.GetTargetIndex(), model.target);
}

void compareRecords(const BINAttributeResults& library, const AttributeRecord& model) {
  compareShared(library, model);
}

void compareOutputs(const BINOutput& output, const std::vector<PairRecord>& model) {
  compareAll<BINAttributeTargetResults>(output, model);
  for (const PairRecord& wanted : model) {
    queryPair(output, model, wanted.attribute, wanted.target);
    queryAttribute(output, model, wanted.attribute);
  }
  queryPair(output, model, 0, 1);
  queryAttribute(output, model, 0);
}

void compareOutputs(const EFBINOutput& output, const std::vector<AttributeRecord>& model) {
  compareAll<BINAttributeResults>(output, model);
  for (const AttributeRecord& wanted : model) {
    queryAttribute(output, model, wanted.attribute);
  }
  queryAttribute(output, model, 0);
}

}  // namespace mcbinning_tests
