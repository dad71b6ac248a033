// The content of a demonstration store: something for every part of the widget and of the commands.
#pragma once

#include "platform/store/ManagedObjectContext.h"

namespace corvane {

/// Adds four accounts, nine lists and some sixty tasks around now, through the model's own operations,
/// without saving. The same clock and zone give the same content. The account of an unlisted kind, the
/// isolated and the removed list are there to be seen, or to be missed, in the right places.
void addDemonstration(ManagedObjectContext& context);

}  // namespace corvane
