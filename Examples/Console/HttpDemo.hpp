#pragma once

/// The plain HTTP service and the session under it: typed records, retries, failures, both protocol versions, the
/// cache.
void demonstrateHttp();
