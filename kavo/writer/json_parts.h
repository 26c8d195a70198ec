#pragma once

#include "kavo/result/results.h"
#include "kavo/writer/json_text.h"

// The fields of the JSON file (docs/results.md), each with its key. What does not exist is null.
namespace kavo::writer {

// "ranges": how far numbers may go for the basis to stay optimal.
void writeRanges(JsonText& json, const Model& model, const Answer& answer);
// "pool" and "objectives": further points, and the value of each objective at the point.
void writePool(JsonText& json, const Results& results);
void writeObjectives(JsonText& json, const Model& model, const Results& results);
// "relaxation": what an infeasible model costs to be feasible, and what is given up for it.
void writeRelaxation(JsonText& json, const Model& model, const Results& results);
// "iis": the members of the conflict.
void writeConflict(JsonText& json, const Model& model, const Results& results);
// "fixed": the answer for the model with its integer variables fixed.
void writeFixed(JsonText& json, const Results& results);

// Pieces of these: an array of numbers, of the words of basis statuses, of the names of all elements of a kind.
void writeNumbers(JsonText& json, const char* key, const Numbers& values);
void writeBasis(JsonText& json, const Statuses& basis);
void writeNames(JsonText& json, const Model& model, int kind);

}  // namespace kavo::writer
