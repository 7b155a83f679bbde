/// Cuts scale variables into bins: the whole interface, and the words that it uses.
///
/// **Case**: one record of the host's data. **Attribute**: a variable whose values are cut.
/// **Target**: a categorical variable; its categories are the classes that the bins are to tell
/// apart. The equal-frequency algorithm has none.
///
/// **Bin**: a stretch of the attribute's scale without gaps. Bins are in ascending order, take up
/// the whole scale, and number one more than the cut points between them.
///
/// **Cut point**: the number between two neighbouring bins. A value that equals it belongs to the
/// lower bin when right borders are closed, which is the default, and to the upper one when they
/// are open (`BINSettings::SetRightBorderClosed`):
///
///     closed   (-inf, c1] (c1, c2] (c2, inf)        open   (-inf, c1) [c1, c2) [c2, inf)
///
/// **Candidate**: a stretch that is never divided, because all bins are made of whole candidates.
/// The supervised algorithm takes each distinct value as one; when an attribute has more of them
/// than the distinct-value threshold, it takes equal-frequency bins instead, called pre-bins. A cut
/// point is the greatest value of the candidate below it (right borders closed), the least value of
/// the one above it (open), or the end that two pre-bins share.
///
/// **Weight**: how many cases a case stands for: 1, or the cell of the weight variable, rounded as
/// that variable says. A case whose weight is missing or, once rounded, not positive counts
/// nowhere.
///
/// **Missing**: a cell is system-missing when it equals the host's `MCMV::gMissingValue`, and
/// user-missing when a definition of its variable says so. A case counts for an attribute and a
/// target only when neither cell is missing; `GetTotalWeightWithMissing` counts the others, too.
///
/// **Ties**: cases of one value always share a bin. -0.0 and 0.0 are one value. Of two splits that
/// are equally good the lower one wins. **Tie order**: the cases of one value stand in the order in
/// which the host hands them out. Their weights are added in it, so that the last bit of a sum of
/// fractional weights is defined.
///
/// **NaN** in an attribute is a value, not a missing one: it comes after all numbers, and every NaN
/// is distinct from every other. Infinities are ordinary values.
///
/// ## How the supervised algorithm cuts
///
/// With the class weights w1 ... wk of some cases and W their sum, the **entropy** is
///
///     Ent = - sum over i of (wi / W) log2 (wi / W),        a weight of 0 adding nothing
///
/// An interval of candidates S of weight n is split into a lower part S1 and an upper part S2 where
///
///     E = (W1 Ent(S1) + W2 Ent(S2)) / (W1 + W2)
///
/// is least. Then both parts are split in turn. A split is accepted when it describes the classes
/// in fewer bits than the interval as a whole would:
///
///     Ent(S) - E  >  log2(n - 1) / n  +  D / n
///     D = log2(3^K - 2) - (K Ent(S) - k1 Ent(S1) - k2 Ent(S2))
///
/// where k1 and k2 are the numbers of classes present in S1 and S2, and **K = k1 + k2**.
///
/// This is the minimum-description-length criterion of U. M. Fayyad and K. B. Irani,
/// "Multi-interval discretization of continuous-valued attributes for classification learning",
/// Proc. 13th Int. Joint Conf. on Artificial Intelligence (1993), 1022-1027, but for K: there it is
/// the number of classes present in S. Here a class on both sides counts twice, which is stricter
/// while Ent(S) is below log2 3, about 1.58, so always with up to three classes, and looser above.
///
/// Afterwards a bin may be folded into a neighbour when it is too light beside both
/// (`BINSettings::SetSmallBinDetectionThreshold`). No cut point means one bin: no split of the
/// attribute was worth its description. It does not mean that attribute and target are independent.
///
/// ## How the equal-frequency algorithm cuts
///
/// With b bins asked for, a cut point is sought where 1/b, 2/b, ... of the total weight is reached:
/// half-way to the next value when it is reached exactly, else the value that crosses it. Repeated
/// cut points and empty bins are left out, so there may be fewer than b bins.
///
/// ## The call
///
///     BINVarList variables;  // the index of a variable is its cell in the host's records
///     const int age = variables.AddContVar("age", "", IBINVariable::AttributeRole);
///     const int bought = variables.AddCatVar("bought", "", std::vector<std::string>{"no", "yes"},
///                                            IBINVariable::TargetRole);
///     BINSettings settings;
///     settings.SetNumberOfBins(10);  // of pre-bins; without it nothing runs
///     BINFactory factory;
///     std::unique_ptr<IBINAlgorithm> algorithm(factory.CreateBINAlgorithm(settings, variables));
///     const MCBinning::MCStatus status = algorithm->Run(cases, nullptr, nullptr);
///     BINAttributeTargetResults result;
///     algorithm->GetOutput()->GetAttributeTargetCutPoints(age, bought, result);
///     result.GetCutPoints();  // and GetCellCounts: per bin its weight, then that of each class
///
/// `cases` is the host's `BINCaseIterator`; its records hold category codes, as the target's
/// encoder gives them. A factory answers null when the list cannot be used; `GetStatus()` says why.
#ifndef MCBINNING_MCBINNING_H
#define MCBINNING_MCBINNING_H

#include <mcbinning/algorithms.h>
#include <mcbinning/case_iterator.h>
#include <mcbinning/encoders.h>
#include <mcbinning/export.h>
#include <mcbinning/factories.h>
#include <mcbinning/outputs.h>
#include <mcbinning/progress.h>
#include <mcbinning/rounds.h>
#include <mcbinning/settings.h>
#include <mcbinning/status.h>
#include <mcbinning/user_missing.h>
#include <mcbinning/variable_list.h>
#include <mcbinning/variables.h>

#endif
