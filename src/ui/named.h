// The names of controls.
//
// Every control that has a name gets it here, and is found by it (QObject::findChild). A control
// that more than one function of its class needs is a private member which bears that very name
// (BtnRun, OutList), without the underscore of other members: a pointer, set when the class is made
// and never changed, to what Qt's parent owns. No class hands a control out; others ask the class
// for what they want done with it.
#pragma once

#include <QObject>
#include <QString>

namespace ledrix {

// Names a control, or another object of Qt's, and returns it.
template <class Object>
Object* Named(Object* object, const QString& name) {
  object->setObjectName(name);
  return object;
}

// The same for one of an array of controls: its name ends in its index, counted from 0.
template <class Object, class Index>
Object* Named(Object* object, const char* array, Index index) {
  return Named(object, array + QString::number(index));
}

}  // namespace ledrix
