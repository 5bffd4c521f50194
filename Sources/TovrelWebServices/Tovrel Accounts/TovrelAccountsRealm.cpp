#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Tovrel Accounts/TovrelAccountsRealm.hpp>

namespace tovrel {

namespace {

TovrelAccountsRealm::Value realmOf(TovrelTeamIdentifier identifier) {
    switch (identifier) {
    case TovrelTeamIdentifier::tovrelstudios:
        return TovrelAccountsRealm::tovrelstudios;
    case TovrelTeamIdentifier::marrowquill:
        return TovrelAccountsRealm::marrowquill;
    }
    fatalError("There is no accounts realm for this team identifier.");
}

} // namespace

TovrelAccountsRealm::TovrelAccountsRealm(TovrelTeamIdentifier identifier) : value_(realmOf(identifier)) {}

} // namespace tovrel
