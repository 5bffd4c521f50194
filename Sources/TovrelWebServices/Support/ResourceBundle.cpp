#include <Platform/System/FatalError.hpp>
#include <TovrelWebServices/Support/LocalizedString.hpp>

#include <mutex>
#include <utility>

namespace tovrel {

namespace {

class EmptyBundle final : public ResourceBundle {
public:
    std::optional<std::string> localizedString(std::string_view /*key*/, std::string_view /*table*/) const override {
        return std::nullopt;
    }

    std::optional<std::uint32_t> color(std::string_view /*name*/, UserInterfaceStyle /*style*/) const override {
        return std::nullopt;
    }
};

struct Setting {
    std::mutex mutex;
    std::shared_ptr<const ResourceBundle> bundle = std::make_shared<EmptyBundle>();
};

Setting& setting() {
    // Never destroyed, so that a text can be looked up as long as the process runs.
    static Setting& instance = *new Setting();
    return instance;
}

} // namespace

ResourceBundle::ResourceBundle() = default;

ResourceBundle::~ResourceBundle() = default;

std::shared_ptr<const ResourceBundle> TovrelWebServicesInstance::bundle() {
    const std::scoped_lock lock(setting().mutex);
    return setting().bundle;
}

void TovrelWebServicesInstance::setBundle(std::shared_ptr<const ResourceBundle> bundle) {
    if (!bundle) {
        fatalError("The resource bundle is null.");
    }
    const std::scoped_lock lock(setting().mutex);
    // Kept until the lock is released: its end may do anything.
    setting().bundle.swap(bundle);
}

const ResourceBundle& resourceBundle() {
    static const auto& kept = *new std::shared_ptr<const ResourceBundle>(TovrelWebServicesInstance::bundle());
    return *kept;
}

std::string localizedString(std::string_view key, std::string_view table, const ResourceBundle& bundle,
                            std::string_view defaultValue, std::string_view /*comment*/) {
    return bundle.localizedString(key, table).value_or(std::string(defaultValue));
}

std::string localizedString(std::string_view key, std::string_view defaultValue, std::string_view comment) {
    return localizedString(key, "Localizable", *TovrelWebServicesInstance::bundle(), defaultValue, comment);
}

} // namespace tovrel
