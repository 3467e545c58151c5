// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "session/CommandLine.h"
#include "session/Output.h"
#include "session/Session.h"
#include "setup/Environment.h"

#include <cstdlib>
#include <exception>
#include <string>
#include <variant>

namespace {

constexpr int unknownEnvironment = 2;

void sayUsage(const sim::UsageError &error, const char *program) {
    if (!error.message.empty())
        sim::say(error.message + "\n");
    sim::say(sim::usage(program));
}

int runSimulator(int argc, char *argv[]) {
    const auto environment = sim::readEnvironment();
    if (const auto *error = std::get_if<sim::EnvironmentError>(&environment)) {
        sim::say("minipro-sim: " + error->message + "\n");
        return unknownEnvironment;
    }
    const auto &surroundings = std::get<sim::Environment>(environment);
    const auto options = sim::parseCommandLine(argc, argv, surroundings.dialect);
    if (const auto *error = std::get_if<sim::UsageError>(&options)) {
        sayUsage(*error, argv[0]);
        return EXIT_FAILURE;
    }
    const sim::Session session(std::get<sim::Options>(options), surroundings);
    return session.run() == sim::Outcome::Good ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char *argv[]) {
    try {
        return runSimulator(argc, argv);
    } catch (const std::exception &error) {
        sim::say(std::string(error.what()) + "\n");
        return EXIT_FAILURE;
    }
}
