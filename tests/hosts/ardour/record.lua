-- Makes a session: the plug-in is a track's instrument, and a second track records its "Midi Out".
dofile(os.getenv("HOSTS_SCRIPTS") .. "/common.lua")

local MIDI = ARDOUR.DataType("midi")
local NO_GROUP = PBD.GroupControlDisposition.NoGroup
local CYCLES = 4096 -- samples, enough for an event to get through

local function find_plug_in()
  local found
  for info in ARDOUR.LuaAPI.list_plugins():iter() do
    if info.type == ARDOUR.PluginType.VST3 and info.name == NAME then
      found = info
      fact("listed", info.name, info.creator, info.category, info.unique_id, info:is_instrument())
    end
  end
  assert(found, "the plug-in is not listed")
  return found
end

-- The audio outputs come with the instrument. A track that is made with them loses them until then, and
-- on a busy machine Ardour ends because their names are still taken.
local function new_track(session, name, instrument)
  local one = ARDOUR.ChanCount(MIDI, 1)
  local list = session:new_midi_track(one, one, true, instrument, nil, nil, 1, name,
    ARDOUR.PresentationInfo.max_order, ARDOUR.TrackMode.Normal, false)
  return list:front()
end

local function tell_parameters(processor)
  local plug = processor:to_insert():plugin(0)
  fact("instance", plug:name(), plug:unique_id(), plug:maker())
  fact("streams", processor:input_streams():n_midi(), processor:output_streams():n_midi(),
    processor:output_streams():n_audio())
  for index = 0, plug:parameter_count() - 1 do
    local _, arguments = plug:get_parameter_descriptor(index, ARDOUR.ParameterDescriptor())
    local descriptor = arguments[2]
    local value = ARDOUR.LuaAPI.get_processor_param(processor, index, true)
    local control = processor:to_automatable():automation_control(
      Evoral.Parameter(ARDOUR.AutomationType.PluginAutomation, 0, index), true)
    fact("parameter", index, descriptor.label, descriptor.lower, descriptor.upper,
      string.format("%.0f", value * 127), plug:parameter_is_input(index), not control:isnil())
  end
end

-- A lane for the first parameter: from 0 at the start to three quarters after a tenth of a second.
local function write_automation(processor)
  local list, points = ARDOUR.LuaAPI.plugin_automation(processor, 0)
  points:add(Temporal.timepos_t(0), 0, false, true)
  points:add(Temporal.timepos_t(4800), 0.75, false, true)
  processor:to_automatable():automation_control(
    Evoral.Parameter(ARDOUR.AutomationType.PluginAutomation, 0, 0), true)
    :set_automation_state(ARDOUR.AutoState.Play)
end

local function let_pass(session, samples)
  local start = session:transport_sample()
  wait_until("the transport moves",
    function() return session:transport_sample() > start + samples end)
end

local function play_notes(session)
  local keyboard =
    AudioEngine:get_port_by_name("x-virtual-keyboard"):to_midiport():to_asyncmidiport()
  local parser = ARDOUR.RawMidiParser()
  local function send(...)
    for _, byte in ipairs({...}) do
      if parser:process_byte(byte) then
        keyboard:write(parser:midi_buffer(), parser:buffer_size(), 0)
      end
    end
    let_pass(session, CYCLES)
  end
  for _, note in ipairs({{0, 60}, {0, 64}, {5, 67}, {15, 127}, {9, 0}, {0, 60}}) do
    send(0x90 + note[1], note[2], 100)
    send(0x80 + note[1], note[2], 0)
    fact("played", note[1], note[2])
  end
end

-- Ticks of a musical time, which is written as "BEATS:TICKS".
local function ticks(time)
  local beats, rest = tostring(time):match("^(%d+):(%d+)$")
  return 1920 * beats + rest
end

local function tell_recorded(playlist)
  for region in playlist:region_list():iter() do
    for note in ARDOUR.LuaAPI.note_list(region:to_midiregion():model()):iter() do
      fact("recorded", note:channel(), note:note(), note:velocity(), ticks(note:time()),
        ticks(note:length()))
    end
  end
end

local function record(session, synth, recorder)
  synth:monitoring_control():set_value(1, NO_GROUP) -- its input, not its empty playlist
  recorder:rec_enable_control():set_value(1, NO_GROUP)
  session:maybe_enable_record(false)
  session:request_roll(ARDOUR.TransportRequestSource.TRS_UI)
  wait_until("it records", function() return session:actively_recording() end)
  -- The track fades in at the start, which would lower the velocities of the first notes.
  let_pass(session, 48000 // 2)
  play_notes(session)
  let_pass(session, 48000 // 4)
  session:request_stop(false, false, ARDOUR.TransportRequestSource.TRS_UI)
  local playlist = recorder:to_track():playlist()
  wait_until("there is a recording", function() return playlist:n_regions() > 0 end)
  tell_recorded(playlist)
end

-- All parameters but the one with automation.
local function set_parameters(processor)
  for index = 1, processor:to_insert():plugin(0):parameter_count() - 1 do
    assert(ARDOUR.LuaAPI.set_processor_param(processor, index, (index % 128) / 127))
  end
  ARDOUR.LuaAPI.wait_for_process_callback(8, 10000)
  fact("set", 1, string.format("%.0f", ARDOUR.LuaAPI.get_processor_param(processor, 1, true) * 127))
end

local function run()
  start_engine()
  local session = create_session(SESSION, "hosts", 48000)
  local info = find_plug_in()
  local synth = new_track(session, "Synth", info)
  local recorder = new_track(session, "Recorder", ARDOUR.PluginInfo())
  assert(recorder:input():midi(0):connect(synth:output():midi(0):name()) == 0)
  assert(synth:input():midi(0):connect("x-virtual-keyboard") == 0)
  local processor = synth:nth_plugin(0)
  tell_parameters(processor)
  write_automation(processor)
  record(session, synth, recorder)
  set_parameters(processor)
  fact("saved", session:save_state("", false, false, false, false, false))
  processor:deactivate()
  fact("saved", session:save_state("inactive", false, false, false, false, false))
end

run()
close()
quit()
