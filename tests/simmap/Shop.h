// SPDX-License-Identifier: Apache-2.0
// A workshop with the classes that simulation texts speak of, loaded.
#pragma once
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>

#include "embedded/QorShownWindows.h"
#include "platform/QorAttributeIds.h"
#include "platform/QorMessage.h"
#include "support/Workshop.h"

class Shop : public Workshop {
public:
    explicit Shop(const char* language = "en") : Workshop({.language = language, .console = false, .user = "ada"}) {
        using enum QorCoreAttributeType;
        abstractClass("Step");
        for (const char* time : {"Work", "Wait", "Rest", "Move"}) attribute("Step", time, Time);
        attribute("Step", "Priority", Integer);
        attribute("Step", "On event", SimulationAction);
        attribute("Step", "Number", Integer);
        attribute("Step", "Costs", Floating);
        attribute("Step", "Info", Text);
        cls("Task", "Step");
        cls("Check", "Task");
        cls("Start");
        attribute("Start", "Info", Text);
        attribute("Start", "Cycle time", Time);
        attribute("Start", "Costs", Floating);
        cls("Call");
        attribute("Call", "Substitute", Text);
        QorAttributeSpec called;
        called.name = "Called";
        called.type = InterReference;
        called.refersToModels = true;
        attribute("Call", called);
        environmentClass("Person");
        attribute("Person", "Info", Text);
        attribute("Person", "Workload", Floating);
        attribute("Person", "Wage", Floating);
        attribute("Person", "On event", SimulationAction);
        attribute("Person", "Hours", Calendar);
        environmentClass("Robot", "Person");
        relationClass("then", "Step", "Step");
        modelType("Process", {"Task", "Check", "Start", "Call"});
        modelType("Staff", {"Person", "Robot"});
    }

    ~Shop() { (void)discard(); }

    void mapping(std::string_view text) { libraryText(library, QorAttributeId::SimulationMapping, text); }
    void results(std::string_view business, std::string_view staff) {
        libraryText(processes, QorAttributeId::SimulationResult, business);
        libraryText(environment, QorAttributeId::SimulationResult, staff);
    }
    /// Makes the library the current one.
    void open() { ASSERT_EQ(load(false), QorErrorCode::Ok); }
    [[nodiscard]] long at(std::string_view cls, std::string_view attribute) const {
        return attributeOf(idOf(cls), attribute);
    }
    /// What was shown since the last question: boxes by their texts, internal errors as "source:line", each with "; ".
    std::string shown() {
        std::string all;
        for (; _seen < platform.shown().size(); ++_seen) {
            const auto& window = platform.shown()[_seen];
            if (window.kind == QorShownKind::Box) all += window.text + "; ";
            if (window.kind == QorShownKind::InternalError)
                all += window.text.substr(0, window.text.find(':', window.text.find(':') + 1)) + "; ";
        }
        return all;
    }

private:
    std::size_t _seen = 0;
};

/// What a message says about one thing.
inline SV::String said(std::uint16_t number, std::string_view about = {}) {
    return Qor_Message(number, {{"%s", about}});
}

/// Runs a test in a process of its own, for what belongs to the process and cannot be made anew.
inline void inOwnProcess(const std::function<void()>& test) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        test();
        std::fflush(nullptr);
        _exit(testing::Test::HasFailure() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the other process tells why";
}
