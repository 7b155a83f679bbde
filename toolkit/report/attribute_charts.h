/// What the charts of one attribute show.
#ifndef MCBIN_TOOLKIT_REPORT_ATTRIBUTE_CHARTS_H
#define MCBIN_TOOLKIT_REPORT_ATTRIBUTE_CHARTS_H

#include <string>
#include <vector>

#include "toolkit/model/model.h"
#include "toolkit/report/svg_charts.h"

namespace mcbin {

/// Texts of ascending numbers: the shortest that read back, and where that is long as few digits as
/// keep neighbours apart, at least four.
std::vector<std::string> shortTexts(const std::vector<double>& numbers);

/// Whether the bins between minimum and maximum can be drawn as wide as they are: all of them
/// finite, and none so narrow that it would be lost.
bool hasDrawableWidths(const AttributeModel& attribute);

/// The bins side by side. With drawable widths the area of a bar is the bin's weight, otherwise the
/// bars are equally wide and the height is.
Histogram histogramOf(const Model& model, const AttributeModel& attribute, const std::string& id);

/// The weight and the class shares of every bin, and set apart of the missing and user-missing
/// cases.
ShareChart shareChartOf(const Model& model, const AttributeModel& attribute, const std::string& id);

}  // namespace mcbin

#endif
