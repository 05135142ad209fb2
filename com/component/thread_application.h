// The application object of each thread: made of a class on first use, or what the host has
// assigned.
//
// What a thread holds is let go when clients hold no object of the thread any longer, and before
// its apartment ends; never after that.
#pragma once

#include <string>

#include "platform/data_library.h"

namespace QuorCom {

/// The key under the class CQueries with the class of the application object.
inline constexpr const wchar_t* kApplicationKey = L"ApplicationClass";

/// Sees to it that threads get their application objects; called once.
void serveApplications();

/// Whether no thread holds an application object, or has been assigned one.
[[nodiscard]] bool holdsNothing() noexcept;

/// The class that this thread's application object is made of.
[[nodiscard]] std::string applicationClass();

/// Sets it for this thread; empty for what is registered. What the thread holds is let go.
void setApplicationClass(const std::string& classId);

/// Assigns this thread's application object; empty: it is made by its class again.
void setApplication(const QuorDataLib::Ref<QuorDataLib::Application>& application);

}  // namespace QuorCom
