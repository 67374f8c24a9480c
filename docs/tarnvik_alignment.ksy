# SPDX-License-Identifier: MIT
# The alignment file for the compiler of Kaitai Struct; alignment-file-format.md says more, above all what a lenient reader
# accepts. The checksums are read but not checked.
meta:
  id: tarnvik_alignment
  title: Alignment tables of the receivers of a radio monitoring station
  file-extension: ad
  license: MIT
  ks-version: 0.9
  endian: be # every number inside a payload; lengths and the CRC-32 are little-endian
seq:
  - id: header
    type: header_chunk
  - id: tables
    type: table
    repeat: expr
    repeat-expr: header.payload.num_tables
types:
  header_chunk:
    seq:
      - id: version
        contents: [5]
      - id: len_payload
        type: u2le
      - id: payload
        type: header_payload
        size: len_payload
      - id: crc8
        type: u1
  header_payload:
    seq:
      - id: sdr_type
        type: u1
        enum: sdr_type
      - id: num_tables
        type: u2
  table:
    seq:
      - id: version
        contents: [5]
      - id: len_payload
        type: u2le
      - id: payload
        type: table_payload
        size: len_payload
      - id: crc8
        type: u1
      - id: data_sets
        type: data_set_chunk
        repeat: expr
        repeat-expr: payload.num_data_sets
  table_payload:
    seq:
      - id: version
        type: u1
        doc: 5 in every file that is saved
      - id: hardware_id
        size: 128
        doc: the id up to the first NUL, or all 128 bytes; the key of the table
      - id: aligned_at
        type: u8
        doc: date of alignment, seconds since 1970-01-01 00:00:00 UTC
      - id: data_set_capacity
        type: u1
        doc: data sets per table of the type
      - id: num_data_sets
        type: u1
  data_set_chunk:
    seq:
      - id: len_payload
        type: u2le
        valid:
          max: 16383
      - id: payload
        type: data_set
        size: len_payload
      - id: crc32
        type: u4le
  data_set:
    doc: one receive path
    seq:
      - id: attributes
        type: u1
        repeat: expr
        repeat-expr: 4
      - id: word_1
        type: u2
      - id: word_2
        type: u2
      - id: num_freq_points
        type: u2
        valid:
          max: 100
      - id: freq_points
        type: freq_point
        repeat: expr
        repeat-expr: num_freq_points
  freq_point:
    seq:
      - id: frequency
        type: u8
      - id: attribute
        type: u1
      - id: num_sample_rate_points
        type: u1
        valid:
          max: 10
      - id: sample_rate_points
        type: sample_rate_point
        repeat: expr
        repeat-expr: num_sample_rate_points
  sample_rate_point:
    seq:
      - id: sample_frequency
        type: u8
      - id: num_gain_entries
        type: u1
        valid:
          max: 50
      - id: attribute
        type: u4
      - id: gain_entries
        type: gain_entry
        repeat: expr
        repeat-expr: num_gain_entries
  gain_entry:
    seq:
      - id: values
        type: u2
        repeat: expr
        repeat-expr: 4
enums:
  sdr_type:
    0: none
    1: lime_mini
    2: lime_usb
    3: rtl_sdr
    4: airspy
