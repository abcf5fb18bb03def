#include "tests/doubles/HostUpdatesDouble.h"

#include <algorithm>

namespace doubles {

using namespace Steinberg;

namespace {

using Guard = std::lock_guard<std::recursive_mutex>;

} // namespace

HostUpdatesDouble::HostUpdatesDouble(HostBooks& host)
: Counted(host, "updateHandler")
{
    host.offer(IUpdateHandler::iid, [this] { return newReference<IUpdateHandler>(this); });
}

/** Objects are compared by their FUnknown, since interfaces of one object differ in address. The
    host's own objects are not queried, so that tests do not count the query as the plug-in's. */
FUnknown* HostUpdatesDouble::identity(FUnknown* object) const
{
    if (auto* known = books.find(object))
        return known->unknown();
    void* result = nullptr;
    if (!object || object->queryInterface(FUnknown::iid, &result) != kResultOk)
        return nullptr;
    auto* unknown = static_cast<FUnknown*>(result);
    unknown->release();
    return unknown;
}

tresult HostUpdatesDouble::addDependent(FUnknown* object, IDependent* dependent)
{
    if (!called("addDependent", books.nameOf(object)) || addResult != kResultOk)
        return addResult == kResultOk ? kResultFalse : addResult;
    auto* unknown = identity(object);
    if (!unknown || !dependent)
        return kResultFalse;
    const Guard guard(mutex);
    dependencies.push_back({unknown, dependent});
    return kResultTrue;
}

tresult HostUpdatesDouble::removeDependent(FUnknown* object, IDependent* dependent)
{
    if (!called("removeDependent", books.nameOf(object)))
        return kResultFalse;
    auto* unknown = identity(object);
    if (!unknown && !dependent)
        return kResultFalse;
    const Guard guard(mutex);
    strikeFromRounds(unknown, dependent);
    const auto matches = [&](const Dependency& dependency) {
        return (!unknown || dependency.object == unknown) &&
               (!dependent || dependency.dependent == dependent);
    };
    dependencies.erase(std::remove_if(dependencies.begin(), dependencies.end(), matches),
                       dependencies.end());
    if (unknown && !hasDependents(unknown))
        notices.erase(std::remove_if(notices.begin(), notices.end(),
                                     [&](const Notice& n) { return n.object == unknown; }),
                      notices.end());
    return kResultTrue;
}

void HostUpdatesDouble::strikeFromRounds(const FUnknown* object, const IDependent* dependent)
{
    for (auto& round : rounds)
        if (!object || round.object == object)
            for (auto*& other : round.dependents)
                if (!dependent || other == dependent)
                    other = nullptr;
}

bool HostUpdatesDouble::hasDependents(const FUnknown* object) const
{
    return std::any_of(dependencies.begin(), dependencies.end(),
                       [&](const Dependency& d) { return d.object == object; });
}

bool HostUpdatesDouble::isUnderWay(const FUnknown* object) const
{
    return std::any_of(rounds.begin(), rounds.end(),
                       [&](const Round& round) { return round.object == object; });
}

tresult HostUpdatesDouble::triggerUpdates(FUnknown* object, int32 message)
{
    auto* unknown = identity(object);
    if (!unknown)
        return kResultFalse;
    Round* round = nullptr;
    {
        const Guard guard(mutex);
        round = &rounds.emplace_back(Round{unknown, {}});
        for (const auto& dependency : dependencies)
            if (dependency.object == unknown)
                round->dependents.push_back(dependency.dependent);
    }
    books.script.getTrace().add("notice(" + books.nameOf(object) + ", " + std::to_string(message) +
                                ")");
    const size_t count = round->dependents.size();
    for (size_t i = 0; i < count; ++i) {
        IDependent* dependent = nullptr;
        {
            const Guard guard(mutex);
            dependent = round->dependents[i];
        }
        if (dependent)
            dependent->update(unknown, message);
    }
    const Guard guard(mutex);
    rounds.erase(std::find_if(rounds.begin(), rounds.end(),
                              [&](const Round& other) { return &other == round; }));
    return count > 0 ? kResultTrue : kResultFalse;
}

tresult HostUpdatesDouble::deferUpdates(FUnknown* object, int32 message)
{
    auto* unknown = identity(object);
    if (!unknown)
        return kResultFalse;
    const Guard guard(mutex);
    const bool known = std::any_of(notices.begin(), notices.end(), [&](const Notice& notice) {
        return notice.object == unknown && notice.message == message;
    });
    if (hasDependents(unknown) && !known)
        notices.push_back({unknown, message});
    return kResultTrue;
}

void HostUpdatesDouble::tell(FUnknown* object, int32 message)
{
    if (deferred)
        deferUpdates(object, message);
    else
        triggerUpdates(object, message);
}

void HostUpdatesDouble::deliver()
{
    std::deque<Notice> again;
    while (true) {
        Notice notice{};
        {
            const Guard guard(mutex);
            if (notices.empty())
                break;
            notice = notices.front();
            notices.pop_front();
            if (isUnderWay(notice.object)) {
                again.push_back(notice);
                continue;
            }
        }
        triggerUpdates(notice.object, notice.message);
    }
    const Guard guard(mutex);
    notices.insert(notices.end(), again.begin(), again.end());
}

void HostUpdatesDouble::forgetDependents()
{
    const std::lock_guard<std::recursive_mutex> guard(mutex);
    dependencies.clear();
}

std::vector<std::string> HostUpdatesDouble::observed() const
{
    const Guard guard(mutex);
    std::vector<std::string> result;
    for (const auto& dependency : dependencies)
        result.push_back(books.nameOf(dependency.object));
    return result;
}

std::vector<std::string> HostUpdatesDouble::unbalanced() const
{
    auto names = observed();
    std::vector<std::string> result;
    while (!names.empty()) {
        const auto name = names.front();
        const auto end = std::remove(names.begin(), names.end(), name);
        result.push_back("dependents of " + name + ": expected 0, is " +
                         std::to_string(names.end() - end));
        names.erase(end, names.end());
    }
    return result;
}

} // namespace doubles
