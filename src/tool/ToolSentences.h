#pragma once

#include "tool/ToolReport.h"

#include <QStringView>

#include <optional>

/// The sentence of failure that \a line holds; \a line is without escape sequences. Nothing if
/// there is none.
std::optional<ToolError> toolErrorIn(QStringView line);
