#pragma once

#include <QColor>
#include <QString>
#include <QVector>

// One object placed on a canvas tab: a guide image, a picture, a comment marker or a
// text box. The type only decides which keys are written; every field is always kept.
struct CanvasObjectSettings {
    QString object_type;                     // "comment", "text_box", or empty/other
    int guide_index = -1;
    QString image_file_path;
    QString name;
    double translate_x = 0.0;
    double translate_y = 0.0;
    double rotation = 0.0;
    double scale_x = 1.0;
    double scale_y = 1.0;
    double crop_left = 0.0;
    double crop_top = 0.0;
    double crop_right = 1.0;
    double crop_bottom = 1.0;
    double opacity = 1.0;
    bool visible = true;
    bool show_width_dimension = false;
    bool show_height_dimension = false;
    QString comment_text;
    double comment_label_offset_x = 0.72;
    double comment_label_offset_y = -0.34;
    double comment_circle_scale = 1.0;
    double comment_font_scale = 1.0;
    QString text_box_text;
    double text_box_font_scale = 5.0;
    bool text_box_bold = false;
    bool text_box_shadow = false;
    int text_box_alignment = 1;
    int text_box_vertical_alignment = 1;
    QColor text_box_color = QColor(255, 255, 255);

    bool isComment() const { return object_type.compare(QLatin1String("comment"), Qt::CaseInsensitive) == 0; }
    bool isTextBox() const { return object_type.compare(QLatin1String("text_box"), Qt::CaseInsensitive) == 0; }
    bool isGuideImage() const { return !isComment() && !isTextBox() && guide_index >= 0; }
    bool isPicture() const { return !isComment() && !isTextBox() && guide_index < 0; }

    bool operator==(const CanvasObjectSettings &) const = default;
};

// One canvas tab.
struct CanvasTabSettings {
    QString title;
    int selected_guide_index = -1;
    bool grid_visible = false;
    bool ratio_visible = false;
    bool bounds_dimensions_visible = true;
    bool bounds_resolution_visible = true;
    bool title_visible = true;
    bool document_custom_title_enabled = false;
    bool document_title_visible = true;
    QString document_custom_title;
    QColor document_title_background_color = QColor(91, 91, 91);
    bool snap = false;
    QColor background_color = QColor(45, 45, 45);
    int transform_mode = 0;                  // 0..3
    double view_zoom = 180.0;
    double view_pan_x = 0.0;
    double view_pan_y = 0.0;
    QVector<CanvasObjectSettings> objects;   // bottom to top

    bool operator==(const CanvasTabSettings &) const = default;
};
