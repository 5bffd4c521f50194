#include <TovrelWebServices/AccountScreens/Views/TovrelUserAccountSource.hpp>

#include <utility>

namespace tovrel {

TovrelUserAccountSource::TovrelUserAccountSource(TovrelUserAccountViewBuilder viewBuilder, QObject* parent)
    : QObject(parent),
      builder(std::move(viewBuilder)),
      loadingType(LoadingType::default_()),
      signInConfig(TovrelUserAccountConfiguration::SignIn::make()),
      manageAccountConfig(TovrelUserAccountConfiguration::ManageAccount::make()) {}

TovrelUserAccountSource::~TovrelUserAccountSource() = default;

} // namespace tovrel
