#include "app/application.h"

int main(int argc, char** argv) { return ml::app::RunApplication(argc, argv); }
