#include "Platform/Application.h"
#include "Vesper_Pro_Agent/AppDelegate.h"

#include <cstdlib>
#include <memory>

int main(int argumentCount, char** arguments) {
    std::exit(Platform::Application::run(argumentCount, arguments, [] {
        return std::make_unique<Vesper_Pro_Agent::AppDelegate>();
    }));
}
