// tyx example: the interface the example plug-in's objects offer its users.
#pragma once

#include <vector>

#include <tyx/TyxObject.h>

/// A filter over a row of samples. The program and the plug-in both include
/// this header; the program recognises the object by its class name.
class ExampleFilter : public tyx::TyxObject {
public:
    virtual std::vector<double> run(const std::vector<double> &samples) const = 0;
};
