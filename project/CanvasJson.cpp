#include "project/CanvasJson.h"

#include "project/JsonFieldVisitors.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace {

using namespace vg::json;


template <typename Object, typename Visit>
void visitCommonKeys(Object &o, Visit &&v)
{
    v("guide_index", o.guide_index);
    v("image_file_path", o.image_file_path);
    v("name", o.name);
    v("translate_x", o.translate_x);
    v("translate_y", o.translate_y);
    v("rotation", o.rotation);
    v("scale_x", o.scale_x);
    v("scale_y", o.scale_y);
    v("crop_left", o.crop_left);
    v("crop_top", o.crop_top);
    v("crop_right", o.crop_right);
    v("crop_bottom", o.crop_bottom);
    v("opacity", o.opacity);
    v("visible", o.visible);
    v("show_width_dimension", o.show_width_dimension);
    v("show_height_dimension", o.show_height_dimension);
}

template <typename Object, typename Visit>
void visitTextBoxKeys(Object &o, Visit &&v)
{
    v("text_box_text", o.text_box_text);
    v("text_box_font_scale", o.text_box_font_scale);
    v("text_box_bold", o.text_box_bold);
    v("text_box_shadow", o.text_box_shadow);
    v("text_box_alignment", o.text_box_alignment);
    v("text_box_vertical_alignment", o.text_box_vertical_alignment);
    v("text_box_color", o.text_box_color);
}

template <typename Object, typename Visit>
void visitCommentKeys(Object &o, Visit &&v)
{
    v("comment_text", o.comment_text);
    v("comment_label_offset_x", o.comment_label_offset_x);
    v("comment_label_offset_y", o.comment_label_offset_y);
    v("comment_circle_scale", o.comment_circle_scale);
    v("comment_font_scale", o.comment_font_scale);
}

template <typename Tab, typename Visit>
void visitTabKeys(Tab &t, Visit &&v)
{
    v("title", t.title);
    v("selected_guide_index", t.selected_guide_index);
    v("grid_visible", t.grid_visible);
    v("ratio_visible", t.ratio_visible);
    v("bounds_dimensions_visible", t.bounds_dimensions_visible);
    v("bounds_resolution_visible", t.bounds_resolution_visible);
    v("title_visible", t.title_visible);
    v("document_custom_title_enabled", t.document_custom_title_enabled);
    v("document_title_visible", t.document_title_visible);
    v("document_custom_title", t.document_custom_title);
    v("document_title_background_color", t.document_title_background_color);
    v("snap", t.snap);
    v("background_color", t.background_color);
    v("view_zoom", t.view_zoom);
    v("view_pan_x", t.view_pan_x);
    v("view_pan_y", t.view_pan_y);
}

template <typename Object>
CanvasObjectSettings readCanvasObject(const Object &json)
{
    CanvasObjectSettings object;
    FieldReader read{json};
    read("object_type", object.object_type);
    visitCommonKeys(object, read);
    visitCommentKeys(object, read);
    visitTextBoxKeys(object, read);
    return object;
}

template <typename Object>
CanvasTabSettings readCanvasTab(const Object &json)
{
    CanvasTabSettings tab;
    visitTabKeys(tab, FieldReader{json});
    tab.transform_mode = std::clamp(readInt(json, QLatin1String("transform_mode"), tab.transform_mode), 0, 3);
    const auto objects = json.value(QLatin1String("objects"));
    if (objects.isArray()) {
        const auto array = objects.toArray();
        tab.objects.reserve(array.size());
        for (const auto &element : array) {
            if (element.isObject())
                tab.objects.append(readCanvasObject(element.toObject()));
        }
    }
    return tab;
}

} // namespace

void writeCanvasObject(JsonTextWriter &w, const CanvasObjectSettings &object)
{
    w.beginObject();
    FieldWriter write{w};
    if (!object.object_type.isEmpty())
        write("object_type", object.object_type);
    visitCommonKeys(object, write);
    if (object.isTextBox())
        visitTextBoxKeys(object, write);
    else if (object.isComment())
        visitCommentKeys(object, write);
    w.endObject();
}

void writeCanvasTab(JsonTextWriter &w, const CanvasTabSettings &tab)
{
    w.beginObject();
    visitTabKeys(tab, FieldWriter{w});
    w.field("transform_mode", std::clamp(tab.transform_mode, 0, 3));
    w.key("objects");
    w.beginArray();
    for (const CanvasObjectSettings &object : tab.objects)
        writeCanvasObject(w, object);
    w.endArray();
    w.endObject();
}

QJsonObject canvasObjectToJson(const CanvasObjectSettings &object)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeCanvasObject(w, object); });
}

CanvasObjectSettings canvasObjectFromJson(const QJsonObject &json)
{
    return readCanvasObject(json);
}

QJsonObject canvasTabToJson(const CanvasTabSettings &tab)
{
    return jsonObjectFromWriter([&](JsonTextWriter &w) { writeCanvasTab(w, tab); });
}

CanvasTabSettings canvasTabFromJson(const QJsonObject &json)
{
    return readCanvasTab(json);
}

CanvasTabSettings canvasTabFromJson(const vg::json::JsonObjectRef &json)
{
    return readCanvasTab(json);
}
