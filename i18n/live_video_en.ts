<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>NdiRuntime</name>
    <message>
        <source>NDI receiver support is unavailable:</source>
        <translation>NDI receiver support is unavailable:</translation>
    </message>
    <message>
        <source>NDI sender support is unavailable:</source>
        <translation>NDI sender support is unavailable:</translation>
    </message>
    <message>
        <source>Required NDI entry points were not found.</source>
        <translation>Required NDI entry points were not found.</translation>
    </message>
    <message>
        <source>Required NDI sender entry points were not found.</source>
        <translation>Required NDI sender entry points were not found.</translation>
    </message>
    <message>
        <source>NDI runtime initialization failed.</source>
        <translation>NDI runtime initialization failed.</translation>
    </message>
    <message>
        <source>no runtime library name</source>
        <translation>no runtime library name</translation>
    </message>
</context>
<context>
    <name>NdiReceiver</name>
    <message>
        <source>Failed to create NDI source finder.</source>
        <translation>Failed to create NDI source finder.</translation>
    </message>
    <message>
        <source>Failed to create NDI receiver for source</source>
        <translation>Failed to create NDI receiver for source</translation>
    </message>
    <message>
        <source>NDI receiver connected to source</source>
        <translation>NDI receiver connected to source</translation>
    </message>
    <message>
        <source>NDI receiver reconnected with source URL</source>
        <translation>NDI receiver reconnected with source URL</translation>
    </message>
    <message>
        <source>Could not upload NDI frame for source</source>
        <translation>Could not upload NDI frame for source</translation>
    </message>
</context>
<context>
    <name>NdiSender</name>
    <message>
        <source>Failed to create NDI projector view sender</source>
        <translation>Failed to create NDI projector view sender</translation>
    </message>
    <message>
        <source>NDI projector view sender opened as</source>
        <translation>NDI projector view sender opened as</translation>
    </message>
</context>
<context>
    <name>SpoutSupport</name>
    <message>
        <source>Spout is not available on this system.</source>
        <translation>Spout is not available on this system.</translation>
    </message>
    <message>
        <source>Failed to open Spout sender for projector view output.</source>
        <translation>Failed to open Spout sender for projector view output.</translation>
    </message>
</context>
<context>
    <name>VideoPlaceholder</name>
    <message>
        <source>NO NDI</source>
        <translation>NO NDI</translation>
    </message>
    <message>
        <source>Select source or check input</source>
        <translation>Select source or check input</translation>
    </message>
    <message>
        <source>NO SPOUT</source>
        <translation>NO SPOUT</translation>
    </message>
    <message>
        <source>Select sender or check input</source>
        <translation>Select sender or check input</translation>
    </message>
</context>
<context>
    <name>MovieTexture</name>
    <message>
        <source>Could not upload movie texture frame:</source>
        <translation>Could not upload movie texture frame:</translation>
    </message>
</context>
<context>
    <name>VideoSourceRegistry</name>
    <message>
        <source>Looking for source...</source>
        <translation>Looking for source...</translation>
    </message>
    <message>
        <source>Connected: %1</source>
        <translation>Connected: %1</translation>
    </message>
</context>
<context>
    <name>SceneVideoSourceControls</name>
    <message>
        <source>Movie decoding</source>
        <translation>Movie decoding</translation>
    </message>
    <message>
        <source>Source state</source>
        <translation>Source state</translation>
    </message>
    <message>
        <source>NDI source</source>
        <translation>NDI source</translation>
    </message>
    <message>
        <source>NDI source name or URL</source>
        <translation>NDI source name or URL</translation>
    </message>
    <message>
        <source>Spout sender</source>
        <translation>Spout sender</translation>
    </message>
    <message>
        <source>Spout sender name</source>
        <translation>Spout sender name</translation>
    </message>
</context>
<context>
    <name>SceneViewOutputControls</name>
    <message>
        <source>None</source>
        <translation>None</translation>
    </message>
    <message>
        <source>Spout</source>
        <translation>Spout</translation>
    </message>
    <message>
        <source>NDI</source>
        <translation>NDI</translation>
    </message>
    <message>
        <source>View output</source>
        <translation>View output</translation>
    </message>
    <message>
        <source>Output name</source>
        <translation>Output name</translation>
    </message>
</context>
</TS>
