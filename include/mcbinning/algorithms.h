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
  /// against it. The return value is OK, warning 120018 when a requested pair ended with a warning
  /// or an error (its record says which), or an error that ended the run: 1 cancelled, 3 a failed
  /// allocation or an exception of a host object, 120004 no cases, 120008 unusable selection,
  /// 120009 number of bins not set, 120010 unusable target, 120012 a target cell that holds no
  /// category code in a list of fewer than two categorical variables, or an error of the temporary
  /// files. Never throws. After code 1 or 3, or when reading the cases ended in an error, no
  /// prepared data and no file are left; unless cancelled, the next run reads the cases it is
  /// given.
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
  /// `attributes` lists variable indexes; null asks for every variable but the weight. The return
  /// value is OK, warning 120018 when a requested attribute ended with a warning or an error (its
  /// record says which), or an error that ended the run: 1 cancelled, 3 a failed allocation or an
  /// exception of a host object, 120004 no cases, 120009 number of bins not set, 120011 no usable
  /// attribute in the list, 120012 a target cell that holds no category code in a list of fewer
  /// than two categorical variables, or an error of the temporary files. A run that reads cases
  /// answers warning 120012 instead of OK when it gave up a column over such a cell. Never throws.
  /// After code 1 or 3, or when reading the cases ended in an error, no prepared data and no file
  /// are left; unless cancelled, the next run reads the cases it is given.
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
