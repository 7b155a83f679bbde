/// How a host gets an algorithm.
#ifndef MCBINNING_FACTORIES_H
#define MCBINNING_FACTORIES_H

#include <mcbinning/algorithms.h>
#include <mcbinning/export.h>
#include <mcbinning/status.h>

#include <memory>

class BINSettings;
class BINVarList;
class EFBINSettings;

/// Makes supervised algorithms; may be used again and again, also from the cancel query that a
/// creation asks. Never throws.
class MCBINNING_API BINFactory {
 public:
  /// The status is OK.
  BINFactory();

  /// Copies the status.
  BINFactory(const BINFactory& other);
  BINFactory& operator=(const BINFactory& other);
  ~BINFactory();

  /// A new algorithm, which the caller owns and deletes. It holds copies of `settings` and
  /// `varList`, whose stored numbers of categories are raised as by IsValidList. Null when
  /// GetStatus() is an error: 120003 when the list is not valid (discrete datum 1 is the index of
  /// the first variable without categories, else of the first with a single one, else -1), 1 when
  /// the settings' cancel query already wants to stop, 3 when an allocation failed or a host object
  /// threw.
  IBINAlgorithm* CreateBINAlgorithm(BINSettings& settings, BINVarList& varList);

  /// The status that the last creation left.
  MCBinning::MCStatus GetStatus() const;

 private:
  MCBinning::MCStatus status_;
  std::unique_ptr<IBINAlgorithm> pendingAlgorithm_;  // null outside a creation
};

/// Makes equal-frequency algorithms; may be used again and again. Never throws.
class MCBINNING_API EFBINFactory {
 public:
  /// The status is OK.
  EFBINFactory();

  /// Copies the status.
  EFBINFactory(const EFBINFactory& other);
  EFBINFactory& operator=(const EFBINFactory& other);
  ~EFBINFactory();

  /// A new algorithm, which the caller owns and deletes. It holds copies of `settings` and
  /// `varList`, whose stored numbers of categories are raised as by IsValidList. Null when
  /// GetStatus() is an error: 120003 when the list is not valid (discrete datum 1 as in
  /// BINFactory), 3 when an allocation failed or a host object threw.
  IEFBINAlgorithm* CreateEFBINAlgorithm(EFBINSettings& settings, BINVarList& varList);

  /// The status that the last creation left.
  MCBinning::MCStatus GetStatus() const;

 private:
  MCBinning::MCStatus status_;
  std::unique_ptr<IEFBINAlgorithm> pendingAlgorithm_;  // null outside a creation
};

#endif
