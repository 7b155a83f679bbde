/// The two algorithms as a host drives them. Create one with a factory (factories.h), call `Run`,
/// read `GetOutput()`, delete it.
#ifndef MCBINNING_ALGORITHMS_H
#define MCBINNING_ALGORITHMS_H

#include <mcbinning/export.h>
#include <mcbinning/status.h>

#include <iosfwd>
#include <string>
#include <vector>

class BINCaseIterator;
class BINOutput;
class BINSettings;
class EFBINOutput;
class EFBINSettings;
class MCQueryCancel;
class ProgressListener;

/// Supervised binning: cut points of scale attributes that separate the categories of a target.
///
/// The host owns the algorithm and deletes it through this interface, which also removes its
/// temporary files (in a forked process it leaves them to the one that created them). Pointers that
/// an algorithm hands out die with it; iterators, listeners and cancel queries are borrowed and
/// must outlive the calls that use them. One object serves one thread at a time; separate objects
/// are independent. A callback must not start a run of the algorithm that calls it.
class MCBINNING_API IBINAlgorithm {
 public:
  IBINAlgorithm();
  IBINAlgorithm(const IBINAlgorithm& other);
  IBINAlgorithm& operator=(const IBINAlgorithm& other);
  virtual ~IBINAlgorithm();

  /// The fixed banner of the component.
  virtual std::string GetVersion() = 0;

  /// Bins the requested pairs and files one record for each in the output. The first successful
  /// preparation reads `cases` to the end; later runs work on what was prepared and leave `cases`
  /// alone.
  ///
  /// `attributes` and `targets` are parallel lists of variable indexes. Without `targets` the
  /// list's target is used; without both, every variable but the target and the weight is binned
  /// against it.
  ///
  /// The return value is OK, a warning, or an error that ended the run:
  ///
  ///     120018 (warning)  a requested pair ended with a warning or an error: its record says which
  ///     1       cancelled, as every later run will be
  ///     3       a failed allocation, or an exception of a host object
  ///     120001  the temporary directory does not exist or cannot have that name
  ///     120004  no case, or none that could be used
  ///     120008  unusable selection: targets alone, lists of different lengths, no pair at all, or
  ///             two lists of which every pair is refused
  ///     120009  the number of bins is not set
  ///     120010  without lists: the target is unusable
  ///     120012  a target cell holds no category code, in a list of fewer than two categorical
  ///             variables; discrete datum 0 is the target's index
  ///     120021  a temporary file could not be made or written
  ///
  /// A record has the status OK, a warning, or the error that its pair was refused with:
  ///
  ///     120014 (warning)  one distinct value; discrete datum 0 is the attribute
  ///     120015 (warning)  no case in which both are present
  ///     120016 (warning)  the target has one category; discrete datum 0 is the target
  ///     120017 (warning)  no split was accepted: one bin
  ///     120002 (warning)  rows lie beyond the outermost pre-bins (an infinite value, a NaN), or
  ///             not every pre-bin was reached
  ///     3       a column could not be read back whole, or did not fit into memory
  ///     120005  attribute and target are one variable, or one of them is the weight; without
  ///             `targets`: the attribute is the weight or the target
  ///     120006  the target is not categorical
  ///     120010  the target is unusable
  ///     120011  without `targets`: the attribute's index is out of range
  ///     120013  with `targets`: an index is out of range; or the attribute has no usable column,
  ///             and discrete datum 0 is the attribute
  ///
  /// Never throws. After code 1 or 3, or when reading the cases ended in an error, no prepared data
  /// and no file are left; unless cancelled, the next run reads the cases it is given.
  virtual MCBinning::MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes,
                                  const std::vector<int>* targets) = 0;

  /// Replaces the host's cancel query; null for none. A wish to stop that was already seen stays.
  virtual void SetCancelPointer(MCQueryCancel* query) = 0;

  /// Makes this and every later run end with code 1.
  virtual void Cancel() = 0;

  /// Replaces the host's listener; null for none.
  virtual void SetProgressListener(ProgressListener* listener) = 0;

  /// The results of all runs so far; never null.
  virtual BINOutput* GetOutput() = 0;

  /// The last status that was not OK of any pair, or error 1 once cancelled (asks the host's cancel
  /// query; error 3, not kept, when that throws); runs do not reset it.
  virtual MCBinning::MCStatus GetStatus() = 0;

  /// The algorithm's own settings; never null. Every run uses the number of bins, the small-bin
  /// threshold, the listener and the skipped attribute reports as they then stand (these again
  /// after every report), the run that reads the cases the others. Only the cancel query is no
  /// longer taken from here: SetCancelPointer() replaces it.
  virtual BINSettings* GetSettings() = 0;

  /// Writes the state as text.
  virtual void Display(std::ostream& os) = 0;
};

/// Equal-frequency binning: cut points of scale attributes that make bins of nearly equal weight.
/// Ownership, lifetimes and threads are as for IBINAlgorithm.
class MCBINNING_API IEFBINAlgorithm {
 public:
  IEFBINAlgorithm();
  IEFBINAlgorithm(const IEFBINAlgorithm& other);
  IEFBINAlgorithm& operator=(const IEFBINAlgorithm& other);
  virtual ~IEFBINAlgorithm();

  /// The fixed banner of the component.
  virtual std::string GetVersion() = 0;

  /// Bins the requested attributes and files one record for each in the output. The first
  /// successful preparation reads `cases` to the end; later runs work on what was prepared and
  /// leave `cases` alone.
  ///
  /// `attributes` lists variable indexes; null asks for every variable but the weight.
  ///
  /// The return value is OK, a warning, or an error that ended the run:
  ///
  ///     120018 (warning)  a requested attribute ended with a warning or an error: its record says
  ///             which
  ///     120012 (warning)  the run read the cases and gave up a column over a cell that holds no
  ///             category code, and nothing that was asked for needs it; discrete datum 0 is its
  ///             column, or the target's index
  ///     1, 3, 120001, 120004, 120009, 120012, 120021  as for IBINAlgorithm
  ///     120011  no attribute of the list can be used
  ///
  /// A record has the status OK, a warning, or the error that its attribute was refused with:
  ///
  ///     120014 (warning)  one distinct value; discrete datum 0 is the attribute
  ///     120015 (warning)  no case in which the attribute is present
  ///     120019 (warning)  no cut point was found; discrete datum 0 is the attribute
  ///     3       a column could not be read back whole, or did not fit into memory
  ///     120005  the attribute is the weight
  ///     120011  its index is out of range
  ///     120013  it has no usable column; discrete datum 0 is the attribute
  ///
  /// Never throws. After code 1 or 3, or when reading the cases ended in an error, no prepared data
  /// and no file are left; unless cancelled, the next run reads the cases it is given.
  virtual MCBinning::MCStatus Run(BINCaseIterator& cases, const std::vector<int>* attributes) = 0;

  /// Replaces the host's cancel query; null for none. A wish to stop that was already seen stays.
  virtual void SetCancelPointer(MCQueryCancel* query) = 0;

  /// Makes this and every later run end with code 1.
  virtual void Cancel() = 0;

  /// Replaces the host's listener; null for none.
  virtual void SetProgressListener(ProgressListener* listener) = 0;

  /// The results of all runs so far; never null.
  virtual EFBINOutput* GetOutput() = 0;

  /// The last status that was not OK of any attribute, or error 1 once a run saw the wish to stop
  /// outside the reading of the cases. Does not ask the host's cancel query; runs do not reset it.
  virtual MCBinning::MCStatus GetStatus() = 0;

  /// The algorithm's own settings; never null. Every run uses the number of bins, the listener and
  /// the skipped attribute reports as they then stand (these again after every report), the run
  /// that reads the cases the others. Only the cancel query is no longer taken from here:
  /// SetCancelPointer() replaces it.
  virtual EFBINSettings* GetSettings() = 0;

  /// Writes the state as text.
  virtual void Display(std::ostream& os) = 0;
};

#endif
