#include <QZFrameworkCoreUI/DebugWindowManager.hpp>

namespace tovrel {

void DebugWindowManager::addTovrelAccountsItem() {}

} // namespace tovrel
