#pragma once

#include <vector>

#include "brel/load/loader.h"

namespace brel::load {

// Whether the solver searches over integer variables: something in the model is discrete, or it has several objectives.
bool isDiscrete(const TranslatedModel& model, const Choices& choices);

// The host's start on the elements that are sent. There are statuses only when every element has one.
rewrite::Starts startOf(const TranslatedModel& model);

// The points from which a search starts, a value per column that is sent, NaN: not given. The start values of the host
// come first, then its other starts, then those of the choices; one in which nothing is known is left out. None for a
// model that is not discrete, and when the host withholds its starts.
std::vector<std::vector<double>> mipStartsOf(const TranslatedModel& model, const Choices& choices);

// Tells the host which of its starts the solver will not heed.
void noteUnusedStarts(const TranslatedModel& model, const rewrite::Starts& start, const Choices& choices);

}  // namespace brel::load
