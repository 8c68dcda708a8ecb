// SPDX-License-Identifier: Apache-2.0
// A workshop with the classes that simulation texts speak of, loaded.
#pragma once
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/QorAttributeIds.h"
#include "platform/QorMessage.h"
#include "simmap/QorSimMappingHandler.h"
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
        references("Call", "Called");
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
};

/// A loaded shop with that mapping, which its handler has not read yet.
template <class Handler>
struct Mapped : Shop {
    explicit Mapped(std::string_view text, const char* language = "en") : Shop(language) {
        mapping(text);
        open();
    }
    Handler handler{library};
};
using MappedShop = Mapped<QorSimMappingHandler>;

inline constexpr const char* kBusiness = R"(
PROCESSSTART "Start" fixedinfo: "Info" fixedcycletime: "Cycle time"
FROMCLASS "Task" fromattribute: "Costs" resultattribute: "Costs"
ACTIVITY "Task" fixednumber: "Number" fixedpersonalcosts: "Costs"
)";
inline constexpr const char* kStaff =
    "PERSON \"Person\" fixedinfo: \"Info\" fixedworkload: \"Workload\"\n"
    "FROMCLASS \"Robot\" fromattribute: \"Wage\" resultattribute: \"Workload\"";

/// A shop with a started order and its staff, all results filled.
class RunShop : public Shop {
public:
    RunShop() {
        results(kBusiness, kStaff);
        process = model("Process", "Order");
        start = object("Start", "Order comes");
        task = object("Task", "Pack");
        check = object("Check", "Check");
        staff = model("Staff", "People");
        robot = object("Robot", "R2");
        fill();
        open();
    }
    void fill() {
        value(start, "Info", "42 orders");
        value(start, "Cycle time", "00:001:00:00:00");
        value(start, "Costs", "12.5");
        for (const auto each : {task, check}) {
            value(each, "Number", "7");
            value(each, "Costs", "1.5");
            value(each, "Info", "kept");
        }
        value(robot, "Workload", "0.8");
    }
    /// All result values, in one text.
    [[nodiscard]] std::string state() const {
        std::string all;
        for (const auto& [object, attribute] :
             {std::pair(start, "Info"), std::pair(start, "Cycle time"), std::pair(start, "Costs"),
              std::pair(task, "Number"), std::pair(check, "Costs"), std::pair(check, "Info"),
              std::pair(robot, "Workload")}) {
            all += reader().valueOf(object, attributeOf(object, attribute));
            all += '|';
        }
        all.pop_back();
        return all;
    }

    QorIdentifier process = 0, staff = 0, start = 0, task = 0, check = 0, robot = 0;
};

inline constexpr const char* kFilled = "42 orders|00:001:00:00:00|12.5|7|1.5|kept|0.8";
inline constexpr const char* kReset = "|00:000:00:00:00|0|0|0|kept|0";

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
