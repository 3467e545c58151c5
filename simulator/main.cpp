#include "CommandLine.h"
#include "Environment.h"
#include "Output.h"
#include "Session.h"

#include <cstdlib>
#include <exception>
#include <variant>

namespace {

constexpr int unknownEnvironment = 2;

int runSimulator(int argc, char *argv[]) {
    const auto environment = sim::readEnvironment();
    if (const auto *error = std::get_if<sim::EnvironmentError>(&environment)) {
        sim::say("minipro-sim: " + error->message + "\n");
        return unknownEnvironment;
    }
    const auto options = sim::parseCommandLine(argc, argv);
    if (const auto *error = std::get_if<sim::UsageError>(&options)) {
        sim::say(error->message + "\n(-h shows the usage)\n");
        return EXIT_FAILURE;
    }
    const sim::Session session(std::get<sim::Options>(options),
                               std::get<sim::Environment>(environment));
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
