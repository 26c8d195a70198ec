#pragma once

#include <string>
#include <vector>

#include "kavo/model/record.h"

namespace kavo {

// Whether the host withholds all that a solve could start from.
inline bool withholdsStarts(const trpRec& record) { return record.basisRatio >= 1; }

// Whether the start basis, if there is one, is lent to the link: it is not withheld, and enough of it is known.
bool lendsBasis(const trpRec& record);

// Appends a line when something to start from is there and is not lent.
void noteWithheld(const trpRec& record, std::vector<std::string>& notes);

}  // namespace kavo
