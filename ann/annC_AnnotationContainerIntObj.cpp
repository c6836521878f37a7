#include "ann/annC_AnnotationContainerIntObj.h"

#include <string>

#include "ann/detail/annC_Members.h"
#include "omu/omu_CvxNameErrorException.h"

namespace {

using Result = annC_InterfaceObj::Result;

void RequireMember(const annC_AnnotationContainer& container, const cow_String& name) {
    if (!container.IsMember(name)) KTSBasThrow(omu_KeyErrorException(name));
}

void RequireNewName(const cow_String& name) {
    if (name.IsEmpty()) KTSBasThrow(omu_CvxNameErrorException(omu_NAME_EMPTY));
    if (name.View().find('\0') != std::string_view::npos) {
        KTSBasThrow(omu_ValueErrorException("name holds a zero byte"));
    }
}

}  // namespace

struct annC_AnnotationContainerIntObj::Methods {
    using Object = annC_AnnotationContainerIntObj;
    using Container = annC_AnnotationContainer;

    template <bool (Container::*move)(const cow_String&)>
    static Result Move(Object& object, omu_Arguments& arguments) {
        cow_String name;
        arguments.Get(name, "name");
        arguments.End();
        RequireMember(*object.container, name);
        (*object.container.*move)(name);
        return nullptr;
    }

    template <bool (Container::*move)(const cow_String&, const cow_String&)>
    static Result MoveBeside(Object& object, omu_Arguments& arguments) {
        cow_String name;
        cow_String other;
        arguments.Get(name, "name");
        arguments.Get(other, "other");
        arguments.End();
        RequireMember(*object.container, name);
        RequireMember(*object.container, other);
        (*object.container.*move)(name, other);
        return nullptr;
    }

    static Result ChangeKey(Object& object, omu_Arguments& arguments) {
        cow_String fromName;
        cow_String toName;
        arguments.Get(fromName, "fromName");
        arguments.Get(toName, "toName");
        arguments.End();
        RequireNewName(toName);
        RequireMember(*object.container, fromName);
        if (!object.container->ChangeKey(fromName, toName)) {
            KTSBasThrow(omu_ValueErrorException(atr("name is already in use: %s", toName)));
        }
        return nullptr;
    }

    static Result Keys(Object& object, omu_Arguments& arguments) {
        arguments.End();
        return omu_NewPrimitive(object.Keys());
    }

    // A fault in the name comes first, since the further arguments depend on the annotation.
    static Result SetValues(Object& object, omu_Arguments& arguments) {
        cow_String name;
        arguments.Get(name, "name");
        if (arguments.ErrorOnPrevious()) arguments.End();
        object.GetItem(name)->SetValues(arguments);
        return nullptr;
    }

    static constexpr annC_Method<Object> kTable[] = {
        {"bringToFront", &Move<&Container::BringToFront>},
        {"bringForward", &Move<&Container::BringForward>},
        {"sendToBack", &Move<&Container::SendToBack>},
        {"sendBackward", &Move<&Container::SendBackward>},
        {"moveBefore", &MoveBeside<&Container::MoveBefore>},
        {"moveAfter", &MoveBeside<&Container::MoveAfter>},
        {"setValues", &SetValues},
        {"changeKey", &ChangeKey},
        {"keys", &Keys},
    };
};

annC_AnnotationContainerIntObj::annC_AnnotationContainerIntObj()
    : container(std::make_shared<annC_AnnotationContainer>()) {}

annC_AnnotationContainerIntObj::annC_AnnotationContainerIntObj(
    const annC_AnnotationContainer& copied)
    : container(std::make_shared<annC_AnnotationContainer>(copied)) {}

std::unique_ptr<annC_AnnotationIntObj> annC_AnnotationContainerIntObj::GetItem(
    const cow_String& name) const {
    RequireMember(*container, name);
    return annC_AnnotationIntObj::Make(container, container->GetId(name));
}

void annC_AnnotationContainerIntObj::SetItem(const cow_String& name,
                                             const annC_AnnotationIntObj& annotation) {
    RequireNewName(name);
    container->Insert(name, annotation.ConstGet());
}

void annC_AnnotationContainerIntObj::RemoveItem(const cow_String& name) {
    RequireMember(*container, name);
    container->Remove(name);
}

cow_String annC_AnnotationContainerIntObj::TypeString() const { return "AnnotationContainer"; }

bool annC_AnnotationContainerIntObj::operator==(const omu_Primitive& other) const {
    const auto* const object = dynamic_cast<const annC_AnnotationContainerIntObj*>(&other);
    return object && *container == *object->container;
}

annC_AnnotationContainerIntObj* annC_AnnotationContainerIntObj::Copy() const {
    return new annC_AnnotationContainerIntObj(*this);
}

cow_List<cow_String> annC_AnnotationContainerIntObj::MemberNames() const { return {}; }

cow_List<cow_String> annC_AnnotationContainerIntObj::MethodNames() const {
    return annC_NamesOf(Methods::kTable);
}

Result annC_AnnotationContainerIntObj::GetMember(const cow_String& member) const {
    RaiseNoSuchMember(member);
}

void annC_AnnotationContainerIntObj::SetMember(const cow_String& member, const omu_Primitive&) {
    RaiseNoSuchMember(member);
}

Result annC_AnnotationContainerIntObj::Call(const cow_String& method, omu_Arguments& arguments) {
    const auto* const row = annC_FindRow(Methods::kTable, method);
    if (!row) RaiseNoSuchMember(method);
    return row->call(*this, arguments);
}

cow_String annC_AnnotationContainerIntObj::Summary() const {
    std::string lines;
    for (annC_AnnotationContainerIT walk(*container); !walk.IsDone(); walk.Next()) {
        if (!lines.empty()) lines += '\n';
        lines += atr("%s: %s", walk.CurrentKey(), TypeNameOf(walk.CurrentValue().TypeId())).View();
    }
    return lines.empty() ? cow_String(kEmptySummary) : cow_String(std::string_view(lines));
}
