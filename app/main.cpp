#include "app/application.h"

int main(int argc, char* argv[]) {
    return tidewell::runApplication(argc, argv);
}
