#include "kavo/model/record.h"

#include "kavo/link/loaded_link.h"
#include "kavo/link/stop_request.h"

trpRec::trpRec() : stop(std::make_unique<kavo::StopRequest>()) {}

// The link goes first: it may still look at the rest.
trpRec::~trpRec() { link.reset(); }
