#pragma once

#include <Platform/System/Export.hpp>

#include <memory>

namespace tovrel {

/// Marks a collaborator of back-offs. It has no operations: a back-off sleeps by its clock.
class TOVREL_EXPORT TaskSleeper {
public:
    virtual ~TaskSleeper();

protected:
    TaskSleeper();
};

/// The sleeper that every `TimesRetryLogicStrategy` owns.
class TOVREL_EXPORT DefaultTaskSleeper final : public TaskSleeper {
public:
    static std::shared_ptr<DefaultTaskSleeper> make();
    ~DefaultTaskSleeper() override;

private:
    DefaultTaskSleeper();
};

} // namespace tovrel
