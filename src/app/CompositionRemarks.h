#pragma once

#include "image/ImageComposition.h"

#include <QStringList>

/// What the user should be told about a composition that did not go as the controls may suggest:
/// a number that is none, or only partly one, a size that wraps, read data that is not there, a
/// refusal. One translated sentence for each, the most important first; empty when there is
/// nothing to say.
QStringList compositionRemarks(const CompositionInputs &inputs, const Composition &composition);
