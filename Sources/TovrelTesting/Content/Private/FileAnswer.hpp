#pragma once

#include <TovrelTesting/Content/ContentFile.hpp>
#include <TovrelTesting/ReceivedRequest.hpp>

namespace tovrel::testing {

/// The file, or 304 where the request's conditions say that the client has it.
ScriptedResponse fileAnswer(const ContentFile& file, const ReceivedRequest& request, Date now);

} // namespace tovrel::testing
