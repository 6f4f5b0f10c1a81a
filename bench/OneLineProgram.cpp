#include <iostream>

int main() {
    std::cout << "keyboard\n";
}
